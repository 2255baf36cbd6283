#pragma once

#include <cstddef>
#include <vector>

#include <zelcore/ustring.h>

#include <zelui/Export.h>

namespace zelui {

/// In which order texts stand when they are sorted the way people look for them: without regard to case, numbers in
/// them by their value, and what is the same by that exactly, character by character. Of a text the first
/// kMaximumSortLength characters count. Equal ones stay in the order in which they came, also downwards.
///
/// Returns the index of the text that comes first, of the one that comes second, and so on. Exported for the tests
/// alone.
ZELUI_API std::vector<std::size_t> GetSortedOrder(std::vector<zelcore::ustring> texts, bool ascending);

constexpr std::size_t kMaximumSortLength = 4096;

}  // namespace zelui
