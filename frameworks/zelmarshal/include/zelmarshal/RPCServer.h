#pragma once

#include <string>

#include <boost/any.hpp>
#include <boost/function.hpp>
#include <boost/shared_ptr.hpp>

#include <zelcore/Serialization.h>
#include <zelmarshal/RPCError.h>

namespace zeltransport {
class Session;
}

namespace zelmarshal {

/// The answering side of JSON-RPC 2.0 over a session. Malformed requests get the protocol's error replies; a frame that
/// is not JSON at all gets one and the session closes. Batches are not spoken and count as malformed; a request without
/// an id is a notification and gets no reply. A request whose answer is let go of unused is answered with
/// kErrorInternal.
///
/// Letting go of a server lets go of its session. No method and no closed handler starts after the destructor has
/// returned on another thread than the I/O thread, or at all after it was released from one of them.
class ZELMARSHAL_API RPCServer {
public:
    /// Answers one request, from any thread, once; later calls of the same answer are ignored. An answer that comes
    /// after the session has closed is dropped.
    class ZELMARSHAL_API Answer {
    public:
        /// `value` becomes the member "value" of the reply; one that cannot be written, or is too long for a frame, is
        /// answered with kErrorInternal.
        void Reply(const boost::any& value) const;
        /// Answers with an error instead; like Reply otherwise.
        void Fail(int code, const std::string& message) const;

    private:
        friend class RPCServer;
        class State;
        boost::shared_ptr<State> mState;
    };

    /// Runs on the I/O thread; may answer later. Throwing RPCError answers with it, any other std::exception with
    /// kErrorInternal and its text.
    typedef boost::function<void(const zelcore::serialization::Array& parameters, const Answer& answer)> Method;

    RPCServer();
    ~RPCServer();
    RPCServer(const RPCServer&) = delete;
    RPCServer& operator=(const RPCServer&) = delete;

    /// Adds a method. Before Serve.
    void RegisterMethod(const std::string& name, const Method& method);
    /// Takes over the session's protocol handlers and holds it; `onClosed` (may be empty) runs once, on the I/O thread,
    /// when the session has closed. Once per server.
    void Serve(const boost::shared_ptr<zeltransport::Session>& session, const boost::function<void()>& onClosed);

private:
    class Impl;
    boost::shared_ptr<Impl> mImpl;
};

}  // namespace zelmarshal
