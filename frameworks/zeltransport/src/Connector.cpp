#include "Connector.h"

#include "CallHandler.h"
#include "Sockets.h"
#include "Timeouts.h"

#include <algorithm>
#include <utility>

#include <boost/asio/buffer.hpp>

#include <zeltransport/PeerProcess.h>

namespace zeltransport {

using boost::asio::ip::tcp;
using boost::system::error_code;
using std::chrono::milliseconds;

namespace {

// A server that is being started listens within a few milliseconds; one that does not is not worth a busy loop.
constexpr milliseconds kFirstDelay(5);
constexpr milliseconds kLongestDelay(50);
constexpr milliseconds kLookDelay(2);
// A server's accept makes the connection known an instant before the descriptor is; a single look may fall between, and
// a connection dropped for that would cost the server its one client.
constexpr int kForeignLooks = 5;

}  // namespace

Connector::Connector(IoLoop& loop, const tcp::endpoint& endpoint, const ClientOptions& options,
                     const ConnectedHandler& onConnected, const FailedHandler& onFailed)
    : mEndpoint(endpoint),
      mOptions(options),
      mOnConnected(onConnected),
      mOnFailed(onFailed),
      mSocket(loop.GetContext()),
      mDeadline(loop.GetContext()),
      mTimer(loop.GetContext()),
      mDelay(kFirstDelay) {}

void Connector::Start() {
    mDeadline.expires_after(std::min(mOptions.connectTimeout, kLongestTimeout));
    mDeadline.async_wait([self = shared_from_this()](const error_code& error) {
        if (!error) self->Fail();
    });
    Try();
}

void Connector::Stop() {
    mStopped = true;
    error_code ignored;
    mSocket.close(ignored);
    mDeadline.cancel();
    mTimer.cancel();
    mOptions.keepTrying.clear();
    mOnConnected = nullptr;
    mOnFailed = nullptr;
}

void Connector::Try() {
    error_code error;
    OpenSocket(mSocket, mEndpoint.protocol(), error);
    if (error) return TryAgainAfter(GetNextDelay());
    mSocket.async_connect(mEndpoint,
                          [self = shared_from_this()](const error_code& result) { self->OnConnected(result); });
}

void Connector::OnConnected(const error_code& error) {
    if (mStopped) return;
    error_code failed = error;
    const tcp::endpoint own = failed ? tcp::endpoint() : mSocket.local_endpoint(failed);
    // While nobody listens on a port of the range that connections take their own port from, a socket may be given that
    // very port and then connects to itself.
    if (failed || own == mEndpoint) return TryAgainAfter(GetNextDelay());
    if (mOptions.serverProcess == 0 || !mEndpoint.address().is_loopback()) return Succeed();
    mForeignLooks = 0;
    LookAtServer();
}

void Connector::LookAtServer() {
    error_code error;
    const tcp::endpoint own = mSocket.local_endpoint(error);
    if (error || IsDropped()) return TryAgainAfter(kLongestDelay);
    switch (LookUpPeer(mEndpoint.port(), own.port(), mOptions.serverProcess)) {
        case PeerOwner::kExpected:
            return Succeed();
        case PeerOwner::kNotYet:
            mForeignLooks = 0;
            break;
        case PeerOwner::kForeign:
            if (++mForeignLooks >= kForeignLooks) return TryAgainAfter(kLongestDelay);
            break;
    }
    After(kLookDelay, &Connector::LookAtServer);
}

bool Connector::IsDropped() {
    char byte = 0;
    error_code error;
    mSocket.non_blocking(true, error);
    if (!error) mSocket.receive(boost::asio::buffer(&byte, 1), tcp::socket::message_peek, error);
    return error && error != boost::asio::error::would_block;
}

milliseconds Connector::GetNextDelay() {
    const milliseconds delay = mDelay;
    mDelay = std::min(mDelay * 3 / 2, kLongestDelay);
    return delay;
}

void Connector::TryAgainAfter(milliseconds delay) {
    error_code ignored;
    mSocket.close(ignored);
    After(delay, &Connector::AskAndTryAgain);
}

void Connector::AskAndTryAgain() {
    bool goOn = true;
    if (mOptions.keepTrying && !CallHandler([&] { goOn = mOptions.keepTrying(); })) goOn = false;
    if (goOn) {
        Try();
    } else {
        Fail();
    }
}

void Connector::Succeed() {
    const ConnectedHandler onConnected = mOnConnected;
    tcp::socket socket = std::move(mSocket);
    Stop();
    onConnected(std::move(socket));
}

void Connector::Fail() {
    if (mStopped) return;
    const FailedHandler onFailed = mOnFailed;
    Stop();
    onFailed();
}

void Connector::After(milliseconds delay, void (Connector::*step)()) {
    mTimer.expires_after(delay);
    mTimer.async_wait([self = shared_from_this(), step](const error_code& error) {
        if (!error && !self->mStopped) ((*self).*step)();
    });
}

}  // namespace zeltransport
