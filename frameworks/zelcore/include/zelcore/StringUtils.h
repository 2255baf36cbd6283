#pragma once

#include <initializer_list>

#include <zelcore/ustring.h>

namespace zelcore {
namespace utility {

/// Replaces every occurrence of `token` in `text` by `replacement` and returns how many there were. The search goes on
/// behind what was inserted, so a replacement that contains the token is not expanded again. An empty token replaces
/// nothing.
ZELCORE_API int ReplaceInString(ustring& text, const ustring& token, const ustring& replacement);

/// `text` with its placeholders "@0", "@1", … replaced by the values of these places, wherever they stand and however
/// often. A placeholder without a value stays; what a value contains is not looked at again, so that a name that reads
/// like a placeholder stays a name. At most ten values.
ZELCORE_API ustring FillPlaceholders(const ustring& text, std::initializer_list<ustring> values);

}  // namespace utility
}  // namespace zelcore
