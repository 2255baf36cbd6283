#pragma once

#include <chrono>

namespace zeltransport {

/// The longest that anything is waited for: a caller's "for ever" must not run over the end of the clock.
constexpr std::chrono::milliseconds kLongestTimeout(std::chrono::hours(24));

}  // namespace zeltransport
