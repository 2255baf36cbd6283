#pragma once

#include <zelcore/ustring.h>

namespace zelcore {
namespace utility {

/// Replaces every occurrence of `token` in `text` by `replacement` and returns how many there were. The search goes on
/// behind what was inserted, so a replacement that contains the token is not expanded again. An empty token replaces
/// nothing.
ZELCORE_API int ReplaceInString(ustring& text, const ustring& token, const ustring& replacement);

}  // namespace utility
}  // namespace zelcore
