#pragma once

#include "FrameReader.h"
#include "FrameWriter.h"
#include "IoLoop.h"

#include <array>
#include <chrono>
#include <functional>
#include <memory>
#include <mutex>
#include <set>
#include <string>
#include <vector>

#include <boost/asio/ip/tcp.hpp>
#include <boost/asio/steady_timer.hpp>

#include <zeltransport/Session.h>

namespace zeltransport {

/// The state behind a session. Its loop holds it until it has closed; the sessions given out are thin handles on it.
class Connection : public Stoppable, public std::enable_shared_from_this<Connection> {
public:
    explicit Connection(const std::shared_ptr<IoLoop>& loop);

    // What Session promises, any thread.
    void Send(std::string frame);
    void Close();
    bool IsOpen() const;
    void SetClosedHandler(const Session::ClosedHandler& handler);
    void SetProtocolHandlers(const Session::MessageHandler& onMessage, const Session::ClosedHandler& onClosed);
    bool RunSoon(const boost::function<void()>& function);
    void RunAfter(std::chrono::milliseconds delay, const boost::function<void()>& function);

    // The rest on the loop's thread only.

    /// Enters the loop. `cancel` (may be empty) runs when the connection closes, to end what is making it.
    void Enter(const std::function<void()>& cancel);
    /// Takes over a connected socket: what waits is sent, what comes is received.
    void Adopt(boost::asio::ip::tcp::socket&& socket);
    void Stop() override { Close(); }

private:
    void BeginClose(bool discardReceived);
    void Finish();
    void RunClosedHandlers();
    Session::ClosedHandler Take(Session::ClosedHandler& slot, bool& ran);
    void HandleLateHandlers();

    bool IsPaused() const;
    void ContinueReading();
    void OnRead(const boost::system::error_code& error, std::size_t size);
    void DeliverFrames();
    std::shared_ptr<const Session::MessageHandler> GetMessageHandler(bool& mayDeliver) const;

    void Flush();
    void OnWriteFailed(const boost::system::error_code& error);
    void StartTimer(std::chrono::milliseconds delay, const boost::function<void()>& function);

    const std::shared_ptr<IoLoop> mLoop;

    // Loop thread only.
    boost::asio::ip::tcp::socket mSocket;
    std::function<void()> mCancelConnecting;
    FrameReader mReader;
    FrameWriter mWriter;
    std::vector<std::string> mTaken;  // what Flush works on, kept for its memory
    std::array<char, 64 * 1024> mChunk;
    std::set<std::shared_ptr<boost::asio::steady_timer>> mTimers;
    bool mConnected = false;
    bool mReading = false;
    bool mWaitingToWrite = false;
    bool mWriteFailed = false;

    mutable std::mutex mMutex;  // guards the rest; handlers run and die outside it
    bool mOpen = true;
    bool mDiscardReceived = false;
    bool mFinished = false;
    std::vector<std::string> mOutgoing;
    std::size_t mQueuedSize = 0;
    std::shared_ptr<const Session::MessageHandler> mOnMessage;
    Session::ClosedHandler mOnProtocolClosed;
    Session::ClosedHandler mOnClosed;
    bool mProtocolClosedRan = false;
    bool mClosedRan = false;
};

/// A new handle on `connection`. When the last copy goes, the connection closes.
boost::shared_ptr<Session> MakeSession(const std::shared_ptr<Connection>& connection);

}  // namespace zeltransport
