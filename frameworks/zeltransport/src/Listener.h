#pragma once

#include "IoLoop.h"

#include <atomic>
#include <chrono>
#include <memory>
#include <set>

#include <boost/asio/ip/tcp.hpp>
#include <boost/asio/steady_timer.hpp>

#include <zeltransport/SocketTransport.h>

namespace zeltransport {

/// Binds a port of the loopback interface, accepts, looks at who it is and hands over those that may be served. Its
/// loop holds it while it works. Loop thread, but for GetPort.
class Listener : public Stoppable, public std::enable_shared_from_this<Listener> {
public:
    struct Handlers {
        SocketTransport::AcceptHandler onAccept;
        SocketTransport::ListenFailedHandler onFailed;
        SocketTransport::ListeningHandler onListening;
    };

    Listener(const std::shared_ptr<IoLoop>& loop, unsigned short port, const ServerOptions& options,
             const Handlers& handlers);
    void Start();
    void Stop() override;
    /// Any thread.
    unsigned short GetPort() const { return mListeningPort; }

private:
    struct Candidate;
    typedef std::chrono::steady_clock::time_point TimePoint;

    void TryToListen(TimePoint deadline);
    void OnListening();
    void Accept();
    void OnAccepted(const std::shared_ptr<Candidate>& candidate, const boost::system::error_code& error);
    void Look(const std::shared_ptr<Candidate>& candidate);
    void Drop(const std::shared_ptr<Candidate>& candidate);
    void Welcome(const std::shared_ptr<Candidate>& candidate);

    const std::shared_ptr<IoLoop> mLoop;
    const unsigned short mPort;
    const ServerOptions mOptions;
    Handlers mHandlers;
    boost::asio::ip::tcp::acceptor mAcceptor;
    boost::asio::steady_timer mTimer;
    std::set<std::shared_ptr<Candidate>> mCandidates;
    bool mAccepting = false;
    bool mStopped = false;
    std::atomic<unsigned short> mListeningPort{0};
};

}  // namespace zeltransport
