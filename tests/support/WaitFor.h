#pragma once

#include <chrono>
#include <functional>

namespace zeltests {

/// Waits until `condition` holds, looking every millisecond; false when it does not within `limit`. `meanwhile` (may be
/// empty) runs between looks, to drive a main loop.
bool WaitFor(const std::function<bool()>& condition, std::chrono::milliseconds limit = std::chrono::seconds(20),
             const std::function<void()>& meanwhile = {});

}  // namespace zeltests
