#include <zelcore/FolderLock.h>

#include <cerrno>

#include <fcntl.h>
#include <sys/file.h>
#include <unistd.h>
#include <zelcore/Utf.h>

namespace zelcore {
namespace filesupport {

FolderLock::FolderLock(const Dir& folder) : mFolder(folder), mHandle(-1) {}

FolderLock::~FolderLock() {
    if (mHandle >= 0) close(static_cast<int>(mHandle));
}

bool FolderLock::TryAcquire() { return Acquire(false); }

bool FolderLock::Acquire() { return Acquire(true); }

bool FolderLock::Acquire(bool wait) {
    if (mHandle >= 0) return true;
    const int descriptor = open(utility::UTF16to8(mFolder.FullPath()).c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    if (descriptor < 0) return false;
    int result = 0;
    do {
        result = flock(descriptor, wait ? LOCK_EX : LOCK_EX | LOCK_NB);
    } while (result != 0 && errno == EINTR);
    if (result != 0) {
        close(descriptor);
        return false;
    }
    mHandle = descriptor;
    return true;
}

}  // namespace filesupport
}  // namespace zelcore
