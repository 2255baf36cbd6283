#include "Listener.h"

#include "CallHandler.h"
#include "Connection.h"
#include "Sockets.h"
#include "Timeouts.h"

#include <algorithm>
#include <string>
#include <utility>

#include <zeltransport/PeerProcess.h>

namespace zeltransport {

using boost::asio::ip::tcp;
using boost::system::error_code;
using std::chrono::milliseconds;

namespace {

constexpr milliseconds kBindDelay(50);
// When a connection cannot be taken, mostly for want of descriptors, trying again at once would only burn the
// processor.
constexpr milliseconds kAcceptDelay(50);
// A client that is not in the table has mostly hung up already; it is not waited for long.
constexpr milliseconds kOwnerLookDelay(10);
constexpr int kMaxLooks = 50;
// Strangers must not be able to fill the process with half-checked connections.
constexpr std::size_t kMaxCandidates = 16;

}  // namespace

/// A connection whose owner is still looked up; nothing is read from it meanwhile.
struct Listener::Candidate {
    explicit Candidate(IoLoop& loop) : socket(loop.GetContext()), timer(loop.GetContext()) {}
    tcp::socket socket;
    boost::asio::steady_timer timer;
    int looks = 0;
};

Listener::Listener(const std::shared_ptr<IoLoop>& loop, unsigned short port, const ServerOptions& options,
                   const Handlers& handlers)
    : mLoop(loop),
      mPort(port),
      mOptions(options),
      mHandlers(handlers),
      mAcceptor(loop->GetContext()),
      mTimer(loop->GetContext()) {}

void Listener::Start() {
    mLoop->Add(shared_from_this());
    if (!mStopped) TryToListen(std::chrono::steady_clock::now() + std::min(mOptions.bindTimeout, kLongestTimeout));
}

void Listener::Stop() {
    mStopped = true;
    mListeningPort = 0;
    error_code ignored;
    mAcceptor.close(ignored);
    mTimer.cancel();
    for (const auto& candidate : mCandidates) {
        candidate->socket.close(ignored);
        candidate->timer.cancel();
    }
    mCandidates.clear();
    // On the way out, since dropping them may let go of anything, this listener's holders included.
    const std::shared_ptr<Listener> self = shared_from_this();
    const Handlers dropped = std::exchange(mHandlers, Handlers());
    mLoop->Remove(self);
}

void Listener::TryToListen(TimePoint deadline) {
    error_code error;
    OpenListener(mAcceptor, tcp::endpoint(boost::asio::ip::address_v4::loopback(), mPort), error);
    if (!error) return OnListening();
    if (std::chrono::steady_clock::now() >= deadline) {
        const auto onFailed = mHandlers.onFailed;
        const std::string reason = "Port " + std::to_string(mPort) + " cannot be listened on: " + error.message();
        Stop();
        if (onFailed) CallHandler([&] { onFailed(reason); });
        return;
    }
    mTimer.expires_after(kBindDelay);
    mTimer.async_wait([self = shared_from_this(), deadline](const error_code& waitError) {
        if (!waitError && !self->mStopped) self->TryToListen(deadline);
    });
}

void Listener::OnListening() {
    error_code ignored;
    mListeningPort = mAcceptor.local_endpoint(ignored).port();
    const auto onListening = std::exchange(mHandlers.onListening, {});
    mHandlers.onFailed.clear();
    if (onListening) CallHandler(onListening);
    Accept();
}

void Listener::Accept() {
    if (mStopped || mAccepting || mCandidates.size() >= kMaxCandidates) return;
    mAccepting = true;
    const auto candidate = std::make_shared<Candidate>(*mLoop);
    AcceptSocket(mAcceptor, candidate->socket, [self = shared_from_this(), candidate](const error_code& error) {
        self->mAccepting = false;
        if (!self->mStopped) self->OnAccepted(candidate, error);
    });
}

void Listener::OnAccepted(const std::shared_ptr<Candidate>& candidate, const error_code& error) {
    if (!error) {
        mCandidates.insert(candidate);
        Look(candidate);
        return Accept();
    }
    if (error == boost::asio::error::would_block || error == boost::asio::error::connection_aborted) return Accept();
    mTimer.expires_after(kAcceptDelay);
    mTimer.async_wait([self = shared_from_this()](const error_code& waitError) {
        if (!waitError) self->Accept();
    });
}

void Listener::Look(const std::shared_ptr<Candidate>& candidate) {
    error_code error;
    const tcp::endpoint own = candidate->socket.local_endpoint(error);
    const tcp::endpoint peer = error ? tcp::endpoint() : candidate->socket.remote_endpoint(error);
    if (error) return Drop(candidate);
    const PeerOwner owner = LookUpPeer(peer.port(), own.port(), mOptions.clientProcess);
    if (owner == PeerOwner::kExpected) return Welcome(candidate);
    if (owner == PeerOwner::kForeign || ++candidate->looks >= kMaxLooks) return Drop(candidate);
    candidate->timer.expires_after(kOwnerLookDelay);
    candidate->timer.async_wait([self = shared_from_this(), candidate](const error_code& waitError) {
        if (!waitError && !self->mStopped) self->Look(candidate);
    });
}

void Listener::Drop(const std::shared_ptr<Candidate>& candidate) {
    error_code ignored;
    candidate->socket.close(ignored);
    mCandidates.erase(candidate);
    Accept();
}

void Listener::Welcome(const std::shared_ptr<Candidate>& candidate) {
    mCandidates.erase(candidate);
    const auto onAccept = mHandlers.onAccept;
    if (mOptions.oneClient) Stop();
    const auto connection = std::make_shared<Connection>(mLoop);
    connection->Enter(nullptr);
    connection->Adopt(std::move(candidate->socket));
    const boost::shared_ptr<Session> session = MakeSession(connection);
    if (onAccept) CallHandler([&] { onAccept(session); });
    Accept();
}

}  // namespace zeltransport
