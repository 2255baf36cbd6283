#include "RunLoopUse.h"

namespace zeltests {

// The system runs plug-ins' timers and windows by itself.
std::size_t GetRunLoopUse() { return 0; }

}  // namespace zeltests
