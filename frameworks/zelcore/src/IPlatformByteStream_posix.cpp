#include <zelcore/IPlatformByteStream.h>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include "NativePath_posix.h"

namespace zelcore {
namespace filesupport {

namespace {

int OpenDescriptor(const std::string& path, int flags) {
    int descriptor = -1;
    do {
        // A pipe or a device must not keep the caller waiting before it is refused.
        descriptor = ::open(path.c_str(), flags | O_CLOEXEC | O_NONBLOCK | O_NOCTTY, 0666);
    } while (descriptor < 0 && errno == EINTR);
    return descriptor;
}

void CheckIsRegular(int descriptor, const ustring& path) {
    struct stat status;
    if (::fstat(descriptor, &status) != 0) throw FileError("open", path, errno);
    if (S_ISDIR(status.st_mode)) throw FileError("open", path, EISDIR);
    if (!S_ISREG(status.st_mode)) throw FileError("open as a regular file", path, 0);
}

}  // namespace

IPlatformByteStream::IPlatformByteStream(const File& file, Mode mode) : mFile(file), mHandle(-1) {
    const ustring& path = file.FullPath();
    const int flags = mode == kRead ? O_RDONLY : O_WRONLY | O_CREAT;
    const int descriptor = OpenDescriptor(NativePath(path, "open"), flags);
    if (descriptor < 0) throw FileError("open", path, errno);
    try {
        CheckIsRegular(descriptor, path);
        // Not O_TRUNC: the file is emptied only once it is known to be one.
        if (mode == kWrite && ::ftruncate(descriptor, 0) != 0) throw FileError("open", path, errno);
    } catch (...) {
        ::close(descriptor);
        throw;
    }
    mHandle = descriptor;
}

IPlatformByteStream::~IPlatformByteStream() { ::close(static_cast<int>(mHandle)); }

std::uint64_t IPlatformByteStream::Length() const {
    struct stat status;
    if (::fstat(static_cast<int>(mHandle), &status) != 0) throw FileError("measure", mFile.FullPath(), errno);
    return static_cast<std::uint64_t>(status.st_size);
}

std::size_t IPlatformByteStream::ReadBlock(void* buffer, std::size_t length) {
    std::size_t done = 0;
    while (done < length) {
        const ssize_t count = ::read(static_cast<int>(mHandle), static_cast<char*>(buffer) + done, length - done);
        if (count == 0) break;
        if (count < 0 && errno != EINTR) throw FileError("read", mFile.FullPath(), errno);
        if (count > 0) done += static_cast<std::size_t>(count);
    }
    return done;
}

void IPlatformByteStream::WriteBlock(const void* buffer, std::size_t length) {
    std::size_t done = 0;
    while (done < length) {
        const ssize_t count =
            ::write(static_cast<int>(mHandle), static_cast<const char*>(buffer) + done, length - done);
        if (count < 0 && errno != EINTR) throw FileError("write", mFile.FullPath(), errno);
        if (count > 0) done += static_cast<std::size_t>(count);
    }
}

}  // namespace filesupport
}  // namespace zelcore
