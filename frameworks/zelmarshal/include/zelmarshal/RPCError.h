#pragma once

#include <stdexcept>
#include <string>

#include <zelmarshal/Export.h>

namespace zelmarshal {

/// Error codes of remote calls; the negative ones below -32000 are those of JSON-RPC 2.0.
enum ErrorCode {
    kErrorParse = -32700,
    kErrorInvalidRequest = -32600,
    kErrorMethodNotFound = -32601,
    kErrorInvalidParams = -32602,
    kErrorInternal = -32603,
    kErrorConnectionLost = -32001,  ///< the connection closed before the reply came; never sent over the wire
    kErrorBadReply = -32002,        ///< the reply could not be understood; never sent over the wire
    kErrorTimeout = -32003          ///< no reply in the time given with the request; never sent over the wire
};

/// What a server's method throws to answer with an error.
class ZELMARSHAL_API RPCError : public std::runtime_error {
public:
    /// `message` is for developers, in UTF-8.
    RPCError(int code, const std::string& message);
    ~RPCError() override;
    /// What goes to the client as the error's code.
    int GetCode() const { return mCode; }

private:
    int mCode;
};

}  // namespace zelmarshal
