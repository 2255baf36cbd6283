#include "FileSystem.h"

#include <atomic>
#include <cstdio>
#include <cstdlib>

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include "NativePath_posix.h"
#include "PathRules.h"

namespace zelcore {
namespace filesupport {

const int kFileTooLargeError = EFBIG;

namespace {

bool GetStatus(const ustring& path, struct stat& status) {
    std::string native;
    return ToNativePath(path, native) && ::stat(native.c_str(), &status) == 0;
}

/// The file that a link leads to, so that replacing the content does not cut the link; `path` for everything else.
std::string ResolveLink(const std::string& path) {
    char* resolved = ::realpath(path.c_str(), nullptr);
    if (!resolved) return path;
    const std::string result = resolved;
    std::free(resolved);
    return result;
}

/// A new file beside the one it is to replace. What was not renamed goes with the object.
class TemporaryFile {
public:
    TemporaryFile(const std::string& target, const ustring& reportedPath) : mReportedPath(reportedPath) {
        // The name does not contain the target's, which may already be as long as a name can be.
        static std::atomic<unsigned> sCounter{0};
        const std::string folder = target.substr(0, target.rfind('/') + 1);
        do {
            mPath = folder + std::string(kTemporaryPrefix) + std::to_string(::getpid()) + "-" +
                    std::to_string(sCounter++) + std::string(kTemporarySuffix);
            mDescriptor = ::open(mPath.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC | O_NOFOLLOW, 0666);
        } while (mDescriptor < 0 && (errno == EEXIST || errno == EINTR));
        if (mDescriptor < 0) throw FileError("write", mReportedPath, errno);
        // Tells those who clean up that it is being written; goes with this process, however that ends.
        ::flock(mDescriptor, LOCK_EX | LOCK_NB);
    }
    ~TemporaryFile() {
        if (mDescriptor >= 0) ::close(mDescriptor);
        if (!mPath.empty()) ::unlink(mPath.c_str());
    }
    TemporaryFile(const TemporaryFile&) = delete;
    TemporaryFile& operator=(const TemporaryFile&) = delete;

    void CopyPermissions(const struct stat& original) {
        // Some file systems know no permissions; the content matters more than they do.
        const int ignored = ::fchmod(mDescriptor, original.st_mode & 0777);
        static_cast<void>(ignored);
    }

    void Write(std::string_view bytes) {
        while (!bytes.empty()) {
            const ssize_t written = ::write(mDescriptor, bytes.data(), bytes.size());
            if (written < 0 && errno != EINTR) throw FileError("write", mReportedPath, errno);
            if (written > 0) bytes.remove_prefix(static_cast<std::size_t>(written));
        }
    }

    /// Without it the new name may be on the disk before the content is.
    void WaitForDisk() {
        // Some file systems cannot say when; the content matters more than the promise.
        if (::fsync(mDescriptor) != 0 && errno != EINVAL && errno != ENOSYS)
            throw FileError("write", mReportedPath, errno);
    }

    void RenameTo(const std::string& target) {
        const int descriptor = mDescriptor;
        mDescriptor = -1;
        // Network and quota file systems report a failed write only here.
        if (::close(descriptor) != 0 && errno != EINTR) throw FileError("write", mReportedPath, errno);
        if (::rename(mPath.c_str(), target.c_str()) != 0) throw FileError("write", mReportedPath, errno);
        mPath.clear();
    }

private:
    ustring mReportedPath;
    std::string mPath;
    int mDescriptor = -1;
};

}  // namespace

bool IsRegularFile(const ustring& path) {
    struct stat status;
    return GetStatus(path, status) && S_ISREG(status.st_mode);
}

bool IsFolder(const ustring& path) {
    struct stat status;
    return GetStatus(path, status) && S_ISDIR(status.st_mode);
}

void DeleteRegularFile(const ustring& path) {
    if (::unlink(NativePath(path, "delete").c_str()) != 0) throw FileError("delete", path, errno);
}

void MakeFolder(const ustring& path) {
    if (::mkdir(NativePath(path, "make the folder").c_str(), 0700) == 0) return;
    const int error = errno;
    if (!IsFolder(path)) throw FileError("make the folder", path, error);
}

void ReplaceFile(const ustring& path, std::string_view bytes, Durability durability) {
    const std::string target = ResolveLink(NativePath(path, "write"));
    struct stat status;
    const bool exists = ::stat(target.c_str(), &status) == 0;
    if (exists && S_ISDIR(status.st_mode)) throw FileError("write", path, EISDIR);
    if (exists && !S_ISREG(status.st_mode)) throw FileError("write as a regular file", path, 0);

    TemporaryFile temporary(target, path);
    if (exists) temporary.CopyPermissions(status);
    temporary.Write(bytes);
    if (durability == kOutlivesPower) temporary.WaitForDisk();
    temporary.RenameTo(target);
}

}  // namespace filesupport
}  // namespace zelcore
