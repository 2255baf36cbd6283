#include "PathRules.h"

namespace zelcore {
namespace filesupport {

std::size_t FindRootEnd(const ustring& path) { return !path.empty() && path.front() == '/' ? 1 : 0; }

ustring WithoutTrailingSeparators(const ustring& path) {
    std::size_t end = path.size();
    while (end > 1 && path[end - 1] == '/') --end;
    return path.substr(0, end);
}

ustring JoinPath(const ustring& folder, const ustring& name) {
    ustring path = folder;
    if (!path.empty() && path.back() != '/') path.push_back('/');
    return path += name;
}

std::size_t FindSeparator(const ustring& path, std::size_t from) {
    const std::size_t separator = path.find('/', from);
    return separator == ustring::npos ? path.size() : separator;
}

std::size_t FindNameStart(const ustring& path) {
    const std::size_t separator = path.rfind('/');
    return separator == ustring::npos ? 0 : separator + 1;
}

ustring ParentFolder(const ustring& path) { return WithoutTrailingSeparators(path.substr(0, FindNameStart(path))); }

bool IsAbsolutePath(const ustring& path) { return !path.empty() && path.front() == '/'; }

}  // namespace filesupport
}  // namespace zelcore
