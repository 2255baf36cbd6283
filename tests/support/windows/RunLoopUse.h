#pragma once

#include <cstddef>

namespace zeltests {

/// How many timers and watches an open editor of the VST3 test plug-ins has in the host's main loop.
std::size_t GetRunLoopUse();

}  // namespace zeltests
