#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <string>

#include <zelcore/FileError.h>
#include <zelcore/Utf.h>

#include "CatalogueFile.h"

namespace zelaudiofilterhost {

namespace {

FileIdentity IdentityOf(const struct stat& status) {
    FileIdentity identity;
    identity.device = status.st_dev;
    identity.number = status.st_ino;
    identity.size = static_cast<std::uint64_t>(status.st_size);
    identity.modificationTime = std::int64_t(status.st_mtim.tv_sec) * 1000000000 + status.st_mtim.tv_nsec;
    return identity;
}

class OpenFile {
public:
    explicit OpenFile(const zelcore::ustring& path)
        // Without O_NONBLOCK, opening a pipe of that name would wait for its other end.
        : mHandle(::open(zelcore::utility::UTF16to8(path).c_str(), O_RDWR | O_CLOEXEC | O_NONBLOCK | O_NOCTTY)) {}
    ~OpenFile() {
        if (mHandle >= 0) ::close(mHandle);
    }
    OpenFile(const OpenFile&) = delete;
    OpenFile& operator=(const OpenFile&) = delete;

    bool Identify(FileIdentity& identity) const {
        struct stat status;
        if (mHandle < 0 || ::fstat(mHandle, &status) != 0 || !S_ISREG(status.st_mode)) return false;
        identity = IdentityOf(status);
        return true;
    }

    bool HasAt(std::uint64_t offset, std::string_view bytes) const {
        std::string found(bytes.size(), '\0');
        const ssize_t count = ::pread(mHandle, found.data(), found.size(), static_cast<off_t>(offset));
        return count == static_cast<ssize_t>(bytes.size()) && found == bytes;
    }

    /// Writes it all with one call, or returns the error number.
    int WriteAt(std::uint64_t offset, std::string_view bytes) const {
        const ssize_t count = ::pwrite(mHandle, bytes.data(), bytes.size(), static_cast<off_t>(offset));
        if (count < 0) return errno;
        // A file system that takes only a part has no room for the rest.
        return static_cast<std::size_t>(count) == bytes.size() ? 0 : ENOSPC;
    }

    bool Truncate(std::uint64_t size) const { return ::ftruncate(mHandle, static_cast<off_t>(size)) == 0; }

private:
    int mHandle;
};

}  // namespace

std::optional<FileIdentity> IdentifyFile(const zelcore::ustring& path) {
    struct stat status;
    if (::stat(zelcore::utility::UTF16to8(path).c_str(), &status) != 0) {
        const int error = errno;
        if (error == ENOENT || error == ENOTDIR) return std::nullopt;
        throw zelcore::filesupport::FileError("look at", path, error);
    }
    return S_ISREG(status.st_mode) ? std::optional<FileIdentity>(IdentityOf(status)) : std::nullopt;
}

bool ReplaceTail(const zelcore::ustring& path, FileIdentity& identity, std::string_view tail,
                 std::string_view replacement) {
    const OpenFile file(path);
    FileIdentity now;
    if (!file.Identify(now) || !(now == identity) || now.size < tail.size()) return false;
    const std::uint64_t begin = now.size - tail.size();
    if (!file.HasAt(begin, tail)) return false;

    const int error = file.WriteAt(begin, replacement);
    if (error != 0) {
        // The old end lies where the file already has its blocks, so a full disk does not keep it from coming back.
        const bool isRestored = file.Truncate(now.size) && file.WriteAt(begin, tail) == 0 && file.Identify(identity);
        if (!isRestored) identity = FileIdentity();
        throw zelcore::filesupport::FileError("extend", path, error);
    }
    if (!file.Identify(identity)) identity = FileIdentity();
    return true;
}

}  // namespace zelaudiofilterhost
