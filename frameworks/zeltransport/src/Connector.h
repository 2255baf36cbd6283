#pragma once

#include "IoLoop.h"

#include <chrono>
#include <functional>
#include <memory>

#include <boost/asio/ip/tcp.hpp>
#include <boost/asio/steady_timer.hpp>

#include <zeltransport/SocketTransport.h>

namespace zeltransport {

/// Makes one connection, trying again until it stands with the right process, the time is over or it is told to stop.
/// Keeps itself alive meanwhile. Loop thread.
class Connector : public std::enable_shared_from_this<Connector> {
public:
    typedef std::function<void(boost::asio::ip::tcp::socket&& socket)> ConnectedHandler;
    typedef std::function<void()> FailedHandler;

    /// One of the handlers runs once, unless Stop comes first.
    Connector(IoLoop& loop, const boost::asio::ip::tcp::endpoint& endpoint, const ClientOptions& options,
              const ConnectedHandler& onConnected, const FailedHandler& onFailed);
    void Start();
    void Stop();

private:
    void Try();
    void OnConnected(const boost::system::error_code& error);
    void LookAtServer();
    bool IsDropped();
    void TryAgainAfter(std::chrono::milliseconds delay);
    void AskAndTryAgain();
    std::chrono::milliseconds GetNextDelay();
    void Succeed();
    void Fail();
    void After(std::chrono::milliseconds delay, void (Connector::*step)());

    const boost::asio::ip::tcp::endpoint mEndpoint;
    ClientOptions mOptions;
    ConnectedHandler mOnConnected;
    FailedHandler mOnFailed;
    boost::asio::ip::tcp::socket mSocket;
    boost::asio::steady_timer mDeadline;
    boost::asio::steady_timer mTimer;
    std::chrono::milliseconds mDelay;
    int mForeignLooks = 0;
    bool mStopped = false;
};

}  // namespace zeltransport
