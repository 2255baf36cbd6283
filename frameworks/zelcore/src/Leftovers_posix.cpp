#include <csignal>
#include <memory>
#include <string>

#include <dirent.h>
#include <fcntl.h>
#include <sys/file.h>
#include <unistd.h>

#include "FileSystem.h"
#include "NativePath_posix.h"

namespace zelcore {
namespace filesupport {

namespace {

bool IsRunning(unsigned long process) { return ::kill(static_cast<pid_t>(process), 0) == 0 || errno != ESRCH; }

/// A process of another machine, or of another container, that shares the folder is not seen, but its lock is.
bool IsBeingWritten(int folder, const char* name) {
    const int descriptor = ::openat(folder, name, O_RDONLY | O_CLOEXEC | O_NOFOLLOW | O_NONBLOCK);
    if (descriptor < 0) return true;
    const bool isLocked = ::flock(descriptor, LOCK_EX | LOCK_NB) != 0;
    ::close(descriptor);
    return isLocked;
}

}  // namespace

void RemoveLeftovers(const ustring& folder) noexcept try {
    std::string native;
    if (!ToNativePath(folder, native)) return;
    const std::unique_ptr<DIR, int (*)(DIR*)> entries(::opendir(native.c_str()), &::closedir);
    if (!entries) return;
    const int descriptor = ::dirfd(entries.get());
    while (const dirent* entry = ::readdir(entries.get())) {
        const unsigned long owner = FindTemporaryOwner(entry->d_name);
        if (owner != 0 && !IsRunning(owner) && !IsBeingWritten(descriptor, entry->d_name))
            ::unlinkat(descriptor, entry->d_name, 0);
    }
} catch (const std::exception&) {
    // Out of memory for a path: the next time will do.
}

}  // namespace filesupport
}  // namespace zelcore
