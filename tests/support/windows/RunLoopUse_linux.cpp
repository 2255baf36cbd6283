#include "RunLoopUse.h"

namespace zeltests {

// A timer, a pipe and the display.
std::size_t GetRunLoopUse() { return 3; }

}  // namespace zeltests
