#pragma once

#include <cstddef>

namespace zeltests {

/// Bytes of this process that are in memory now.
std::size_t GetResidentMemory();

}  // namespace zeltests
