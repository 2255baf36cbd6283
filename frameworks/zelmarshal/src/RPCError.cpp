#include <zelmarshal/RPCError.h>

namespace zelmarshal {

RPCError::RPCError(int code, const std::string& message) : std::runtime_error(message), mCode(code) {}

RPCError::~RPCError() = default;

}  // namespace zelmarshal
