#pragma once

#include <algorithm>
#include <cstddef>
#include <string_view>

#include <zelcore/ustring.h>

namespace zelaudiofilterhost {

/// Text that a plug-in left in a buffer of `size` units, made fit to be shown and stored: it ends at the first NUL or
/// at the buffer's end, ill-formed parts become U+FFFD, control characters become spaces, spaces at both ends go, and
/// it is cut at PluginComponentInfo::kMaxTextLength. Any thread.
zelcore::ustring CleanPluginText(const char* buffer, std::size_t size);
/// The same of a whole text.
zelcore::ustring CleanPluginText(const zelcore::ustring& text);

/// The same of UTF-16, whatever type its units have on this platform.
template <typename Unit>
requires(sizeof(Unit) == sizeof(zelcore::ustring::value_type)) zelcore::ustring
    CleanPluginText(const Unit* buffer, std::size_t size) {
    return CleanPluginText(zelcore::ustring(buffer, std::find(buffer, buffer + size, Unit(0))));
}

}  // namespace zelaudiofilterhost
