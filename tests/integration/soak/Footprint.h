#pragma once

#include <cstddef>

namespace zeltests {

/// What this process has of what can be left behind.
struct Footprint {
    std::size_t resident = 0;   ///< bytes in memory
    std::size_t allocated = 0;  ///< bytes that were allocated and not freed
    std::size_t descriptors = 0;
    std::size_t windows = 0;  ///< on the whole display
    std::size_t threads = 0;

    static Footprint Take();
};

}  // namespace zeltests
