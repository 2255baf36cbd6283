#pragma once

#include <cstddef>

namespace zeltests {

/// Counts, while it lives, how often its thread asks for memory by `new` or gives some back by `delete`.
class AllocationCount {
public:
    AllocationCount();
    ~AllocationCount();
    AllocationCount(const AllocationCount&) = delete;
    AllocationCount& operator=(const AllocationCount&) = delete;

    std::size_t Get() const;
};

}  // namespace zeltests
