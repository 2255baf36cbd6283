#pragma once

#include <chrono>
#include <cstddef>
#include <string>

#include <boost/function.hpp>
#include <boost/shared_ptr.hpp>

#include <zeltransport/Export.h>

namespace zeltransport {

/// The most bytes that one frame may carry; a longer announcement closes the session before anything is allocated.
constexpr std::size_t kMaxFrameSize = 16 * 1024 * 1024;

/// The most bytes that may wait to be sent; a peer that takes nothing for so long has its session closed.
constexpr std::size_t kMaxQueuedSize = 4 * kMaxFrameSize;

/// One connection that carries frames: a 32-bit little-endian length, then that many bytes.
///
/// Every handler runs on the transport's I/O thread, never two at a time and never inside a call of this class. All
/// operations may be called from any thread. A session that nobody holds any more closes itself. One that outlives its
/// transport is closed and does nothing any more; what is set or called on it then never runs.
///
/// Once the handlers for the end have run, the session lets go of all its handlers. A handler should not throw: a
/// message handler that does closes the session, what other handlers throw is dropped.
class ZELTRANSPORT_API Session {
public:
    /// Gets the content of one frame, which is there during the call only.
    typedef boost::function<void(const char* bytes, std::size_t size)> MessageHandler;
    /// Called once, when the session is over.
    typedef boost::function<void()> ClosedHandler;

    /// Queues one frame. Frames sent before the connection stands wait in order; after it has closed they are dropped.
    /// A frame above kMaxFrameSize, or more than kMaxQueuedSize waiting, closes the session instead.
    virtual void Send(std::string frame) = 0;

    /// Closes the connection: returns at once, the handlers follow on the I/O thread. Again is harmless. Of the frames
    /// sent before, those that the system takes without waiting still go; no frame is received any more.
    virtual void Close() = 0;

    /// True until the connection has closed or Close was called (also while it is being made).
    virtual bool IsOpen() const = 0;

    /// Sets what runs when the connection has closed, for whatever reason: the peer went, a bad frame, a connection
    /// that could not be made in time, Close, or the end of the transport. It runs exactly once per session, after the
    /// protocol's own handler; set on a session that has closed already, it runs soon. An empty function takes the
    /// handler away.
    virtual void SetConnectionClosedHandler(const ClosedHandler& handler) = 0;

    /// For the protocol spoken over the session: what receives each frame, and what runs once when the connection has
    /// closed. Set before the first frame is expected; frames that came earlier are handed over then, in order.
    virtual void SetProtocolHandlers(const MessageHandler& onMessage, const ClosedHandler& onClosed) = 0;

    /// Runs `function` soon on the I/O thread, also when the session has closed. False when the transport has ended:
    /// then it never runs.
    virtual bool RunSoon(const boost::function<void()>& function) = 0;

    /// Runs `function` on the I/O thread when `delay` has passed; it is dropped if the session closes before.
    virtual void RunAfter(std::chrono::milliseconds delay, const boost::function<void()>& function) = 0;

protected:
    virtual ~Session();
};

}  // namespace zeltransport
