#include "OwnedHandle_win32.h"

#include <string>

#include <zelcore/FileError.h>

#include "CatalogueFile.h"
#include "WidePath_win32.h"

namespace zelaudiofilterhost {

namespace {

FileIdentity IdentityOf(const BY_HANDLE_FILE_INFORMATION& status) {
    FileIdentity identity;
    identity.device = status.dwVolumeSerialNumber;
    identity.number = JoinHalves(status.nFileIndexHigh, status.nFileIndexLow);
    identity.size = JoinHalves(status.nFileSizeHigh, status.nFileSizeLow);
    identity.modificationTime = static_cast<std::int64_t>(
        JoinHalves(status.ftLastWriteTime.dwHighDateTime, status.ftLastWriteTime.dwLowDateTime));
    return identity;
}

HANDLE Open(const zelcore::ustring& path, DWORD access) {
    return CreateFileW(ToWide(path).c_str(), access, kShareEverything, nullptr, OPEN_EXISTING,
                       FILE_FLAG_BACKUP_SEMANTICS, nullptr);
}

class OpenFile {
public:
    OpenFile(const zelcore::ustring& path, DWORD access) : mHandle(Open(path, access)) {}

    bool IsOpen() const { return mHandle.IsOpen(); }

    bool Identify(FileIdentity& identity) const {
        BY_HANDLE_FILE_INFORMATION status;
        if (!IsOpen() || !IsFileOnDisk(mHandle.Get()) || !GetFileInformationByHandle(mHandle.Get(), &status) ||
            (status.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY) != 0)
            return false;
        identity = IdentityOf(status);
        return true;
    }

    bool HasAt(std::uint64_t offset, std::string_view bytes) const {
        std::string found(bytes.size(), '\0');
        OVERLAPPED place = PlaceOf(offset);
        DWORD count = 0;
        return ReadFile(mHandle.Get(), found.data(), static_cast<DWORD>(found.size()), &count, &place) &&
               count == bytes.size() && found == bytes;
    }

    /// Writes it all with one call, or returns the error number.
    int WriteAt(std::uint64_t offset, std::string_view bytes) const {
        OVERLAPPED place = PlaceOf(offset);
        DWORD count = 0;
        if (!WriteFile(mHandle.Get(), bytes.data(), static_cast<DWORD>(bytes.size()), &count, &place)) {
            return static_cast<int>(GetLastError());
        }
        StampTime();
        return count == bytes.size() ? 0 : ERROR_DISK_FULL;
    }

    bool Truncate(std::uint64_t size) const {
        LARGE_INTEGER end;
        end.QuadPart = static_cast<LONGLONG>(size);
        return SetFilePointerEx(mHandle.Get(), end, nullptr, FILE_BEGIN) && SetEndOfFile(mHandle.Get());
    }

private:
    static OVERLAPPED PlaceOf(std::uint64_t offset) {
        OVERLAPPED place = {};
        place.Offset = static_cast<DWORD>(offset);
        place.OffsetHigh = static_cast<DWORD>(offset >> 32);
        return place;
    }

    /// The system would write the time down when the file is closed, after it was asked for.
    void StampTime() const {
        FILETIME now;
        GetSystemTimePreciseAsFileTime(&now);
        SetFileTime(mHandle.Get(), nullptr, nullptr, &now);
    }

    const OwnedHandle mHandle;
};

bool IsAbsence(DWORD error) {
    return error == ERROR_FILE_NOT_FOUND || error == ERROR_PATH_NOT_FOUND || error == ERROR_INVALID_NAME ||
           error == ERROR_DIRECTORY;
}

}  // namespace

std::optional<FileIdentity> IdentifyFile(const zelcore::ustring& path) {
    const OpenFile file(path, FILE_READ_ATTRIBUTES);
    if (!file.IsOpen()) {
        const DWORD error = GetLastError();
        if (IsAbsence(error)) return std::nullopt;
        throw zelcore::filesupport::FileError("look at", path, static_cast<int>(error));
    }
    FileIdentity identity;
    return file.Identify(identity) ? std::optional<FileIdentity>(identity) : std::nullopt;
}

bool ReplaceTail(const zelcore::ustring& path, FileIdentity& identity, std::string_view tail,
                 std::string_view replacement) {
    const OpenFile file(path, GENERIC_READ | GENERIC_WRITE);
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
