#pragma once

#include <cstddef>
#include <string_view>

#include <zelcore/ustring.h>

namespace zelaudiofilterhost {

/// Text that a plug-in left in a buffer of `size` units, made fit to be shown and stored: it ends at the first NUL or
/// at the buffer's end, ill-formed parts become U+FFFD, control characters become spaces, spaces at both ends go, and
/// it is cut at PluginComponentInfo::kMaxTextLength. Any thread.
zelcore::ustring CleanPluginText(const char* buffer, std::size_t size);
zelcore::ustring CleanPluginText(const char16_t* buffer, std::size_t size);

}  // namespace zelaudiofilterhost
