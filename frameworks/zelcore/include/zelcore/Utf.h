#pragma once

#include <string_view>

#include <zelcore/ustring.h>

namespace zelcore {
namespace utility {

/// Converts UTF-16 to UTF-8. A surrogate without its partner becomes U+FFFD. Never throws for bad input. Any thread.
ZELCORE_API utf8string UTF16to8(const ustring& text);

/// Converts UTF-8 to UTF-16. Each ill-formed sequence (overlong, cut off, surrogate, beyond U+10FFFF, stray byte)
/// becomes one U+FFFD for its longest well-formed beginning, as Unicode recommends. A byte-order mark is text like any
/// other. Never throws for bad input. Any thread.
ZELCORE_API ustring UTF8to16(std::string_view text);

/// Widens text that is known to be ASCII, such as a literal; a byte above 127 becomes U+FFFD.
ZELCORE_API ustring AsciiToUTF16(std::string_view text);

}  // namespace utility
}  // namespace zelcore
