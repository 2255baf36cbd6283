#pragma once

#include <cerrno>
#include <string>

#include <zelcore/FileError.h>
#include <zelcore/Utf.h>

namespace zelcore {
namespace filesupport {

/// The path as system calls take it. A path with a zero inside is none: the system would silently use its beginning.
inline bool ToNativePath(const ustring& path, std::string& native) {
    if (path.find(static_cast<unsigned short>(0)) != ustring::npos) return false;
    const utf8string text = utility::UTF16to8(path);
    native.assign(text.begin(), text.end());
    return true;
}

/// The same for operations that fail by FileError.
inline std::string NativePath(const ustring& path, const char* operation) {
    std::string native;
    if (!ToNativePath(path, native)) throw FileError(operation, path, EINVAL);
    return native;
}

}  // namespace filesupport
}  // namespace zelcore
