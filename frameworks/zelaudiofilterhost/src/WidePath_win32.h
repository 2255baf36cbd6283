#pragma once

#include <string>
#include <string_view>

#include <zelcore/Utf.h>

namespace zelaudiofilterhost {

/// The longest path that the system takes or gives, the zero behind it included.
constexpr std::size_t kMaxWidePath = 32768;

/// The text as system calls take it.
inline std::wstring ToWide(const zelcore::ustring& text) { return std::wstring(text.begin(), text.end()); }
/// The same for UTF-8.
inline std::wstring ToWide(std::string_view text) { return ToWide(zelcore::utility::UTF8to16(text)); }

/// What system calls give, as a text.
inline zelcore::ustring FromWide(std::wstring_view text) { return zelcore::ustring(text.begin(), text.end()); }

/// What system calls give, as UTF-8.
inline std::string ToUtf8(std::wstring_view text) {
    const zelcore::utf8string bytes = zelcore::utility::UTF16to8(FromWide(text));
    return std::string(bytes.data(), bytes.size());
}

/// Whether it begins at a root: of a drive, of a share, or of the current drive; and is all text.
inline bool IsFullWidePath(std::wstring_view path) {
    if (path.empty() || path.find(L'\0') != std::wstring_view::npos) return false;
    const auto isSeparator = [](wchar_t unit) { return unit == L'\\' || unit == L'/'; };
    return isSeparator(path[0]) || (path.size() >= 3 && path[1] == L':' && isSeparator(path[2]));
}

}  // namespace zelaudiofilterhost
