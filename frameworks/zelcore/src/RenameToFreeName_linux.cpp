#include <cstdio>

#include <fcntl.h>
#include <unistd.h>

#include "FileSystem.h"
#include "NativePath_posix.h"

namespace zelcore {
namespace filesupport {

bool RenameToFreeName(const ustring& from, const ustring& to) {
    const std::string source = NativePath(from, "rename");
    const std::string target = NativePath(to, "rename");
    if (::renameat2(AT_FDCWD, source.c_str(), AT_FDCWD, target.c_str(), RENAME_NOREPLACE) == 0) return true;
    if (errno == EEXIST) return false;
    if (errno != EINVAL && errno != ENOSYS) throw FileError("rename", from, errno);

    // File systems without that call: a second name never replaces anything either.
    if (::link(source.c_str(), target.c_str()) != 0) {
        if (errno == EEXIST) return false;
        throw FileError("rename", from, errno);
    }
    if (::unlink(source.c_str()) != 0) throw FileError("rename", from, errno);
    return true;
}

}  // namespace filesupport
}  // namespace zelcore
