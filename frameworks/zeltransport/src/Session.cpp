#include <zeltransport/Session.h>

namespace zeltransport {

Session::~Session() = default;

}  // namespace zeltransport
