#pragma once

#include <string>

#include <boost/any.hpp>
#include <boost/function.hpp>
#include <boost/shared_ptr.hpp>

#include <zelmarshal/RPCError.h>

namespace zeltransport {
class Session;
}

namespace zelmarshal {

/// The calling side of JSON-RPC 2.0 over a session. Each request ends in exactly one of its two handlers, on the I/O
/// thread; a closed connection ends what is outstanding with kErrorConnectionLost, before the session's own closed
/// handler runs. Replies nobody asked for, or that cannot be understood, close the session. Any thread.
///
/// Letting go of a client drops what is outstanding: no handler starts after the destructor has returned on another
/// thread than the I/O thread, or at all after it was released from a handler.
class ZELMARSHAL_API RPCClient {
public:
    /// Gets the reply, an Object whose member "value" is what the method returned, and the request's id.
    typedef boost::function<void(const boost::shared_ptr<boost::any>& reply, int requestId)> ReplyHandler;
    /// Gets one of RPCError's codes, or the peer's own, and a text for developers.
    typedef boost::function<void(int code, const std::string& message)> ErrorHandler;

    /// Takes over the session's protocol handlers. `clientName` goes with every request, for the peer's messages.
    RPCClient(const boost::shared_ptr<zeltransport::Session>& session, const std::string& clientName);
    ~RPCClient();
    RPCClient(const RPCClient&) = delete;
    RPCClient& operator=(const RPCClient&) = delete;

    /// Sends a call made with zelcore::serialization::BuildCall and returns its id. `timeoutMilliseconds` 0 waits as
    /// long as the connection stands; a reply that comes after its time is ignored. Throws
    /// zelcore::serialization::SerializationError for a request that cannot be written or is too long for a frame. On a
    /// session whose transport has ended there is no I/O thread any more: `onError` then runs before this returns.
    int SendRequest(const boost::shared_ptr<boost::any>& request, const ReplyHandler& onReply,
                    const ErrorHandler& onError, int timeoutMilliseconds);

private:
    class Impl;
    boost::shared_ptr<Impl> mImpl;
};

}  // namespace zelmarshal
