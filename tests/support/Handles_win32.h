#pragma once

#include <cstddef>

namespace zeltests {

/// Handles that this process has open; those of them that its child processes would get.
std::size_t CountHandles();
std::size_t CountInheritableHandles();

/// Whether the system is wine, of which some tests know that it does not do what Windows does.
bool IsWine();

}  // namespace zeltests
