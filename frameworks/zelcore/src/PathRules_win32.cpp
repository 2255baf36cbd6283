#include "PathRules.h"

#include <algorithm>

namespace zelcore {
namespace filesupport {

namespace {

bool IsSeparator(unsigned short unit) { return unit == '\\' || unit == '/'; }

bool HasDrive(const ustring& path) {
    return path.size() >= 2 && path[1] == ':' && ((path[0] | 0x20) >= 'a' && (path[0] | 0x20) <= 'z');
}

/// "\\server\share", or "\\?\" and "\\.\" with what follows them.
bool IsNetworkPath(const ustring& path) { return path.size() >= 3 && IsSeparator(path[0]) && IsSeparator(path[1]); }

}  // namespace

std::size_t FindRootEnd(const ustring& path) {
    if (HasDrive(path)) return path.size() > 2 && IsSeparator(path[2]) ? 3 : 2;
    if (IsNetworkPath(path) && !IsSeparator(path[2])) return FindSeparator(path, FindSeparator(path, 2) + 1);
    return !path.empty() && IsSeparator(path.front()) ? 1 : 0;
}

ustring WithoutTrailingSeparators(const ustring& path) {
    const std::size_t root = FindRootEnd(path);
    std::size_t end = path.size();
    while (end > root && IsSeparator(path[end - 1])) --end;
    return path.substr(0, end);
}

ustring JoinPath(const ustring& folder, const ustring& name) {
    ustring path = folder;
    // Who wrote it with the one separator finds it so again: paths are compared by the letter.
    const bool slashes = path.find('/') != ustring::npos && path.find('\\') == ustring::npos;
    if (!path.empty() && !IsSeparator(path.back())) path.push_back(slashes ? '/' : '\\');
    return path += name;
}

std::size_t FindSeparator(const ustring& path, std::size_t from) {
    if (from >= path.size()) return path.size();
    return static_cast<std::size_t>(
        std::find_if(path.begin() + static_cast<std::ptrdiff_t>(from), path.end(), IsSeparator) - path.begin());
}

std::size_t FindNameStart(const ustring& path) {
    std::size_t start = path.size();
    while (start > 0 && !IsSeparator(path[start - 1])) --start;
    return start == 0 && HasDrive(path) ? 2 : start;
}

ustring ParentFolder(const ustring& path) { return WithoutTrailingSeparators(path.substr(0, FindNameStart(path))); }

bool IsAbsolutePath(const ustring& path) {
    return IsNetworkPath(path) || (HasDrive(path) && path.size() > 2 && IsSeparator(path[2]));
}

}  // namespace filesupport
}  // namespace zelcore
