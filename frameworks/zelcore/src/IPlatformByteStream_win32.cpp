#include <zelcore/IPlatformByteStream.h>

#include <algorithm>

#include <windows.h>

#include "NativePath_win32.h"

namespace zelcore {
namespace filesupport {

namespace {

/// What one call is asked to read or write at most.
constexpr std::size_t kLongestBlock = 1u << 30;

HANDLE ToHandle(std::intptr_t handle) { return reinterpret_cast<HANDLE>(handle); }

/// Whether the file could be opened or not: the reason that tells most, for one that is none.
void CheckIsRegular(const FileHandle& file, const ustring& path, const std::wstring& native) {
    const int error = LastSystemError();
    if (file.IsOpen() && IsRegularFile(file.Get())) return;
    if (file.IsOpen() && !IsFolder(file.Get())) throw FileError("open as a regular file", path, 0);
    const DWORD attributes = GetFileAttributesW(native.c_str());
    const bool folder = attributes != INVALID_FILE_ATTRIBUTES && (attributes & FILE_ATTRIBUTE_DIRECTORY) != 0;
    throw FileError("open", path, folder ? kIsFolderError : error);
}

}  // namespace

IPlatformByteStream::IPlatformByteStream(const File& file, Mode mode) : mFile(file), mHandle(-1) {
    const ustring& path = file.FullPath();
    const std::wstring native = NativePath(path, "open");
    FileHandle opened = mode == kRead ? OpenShared(native, GENERIC_READ, OPEN_EXISTING)
                                      : OpenShared(native, GENERIC_WRITE, OPEN_ALWAYS);
    CheckIsRegular(opened, path, native);
    // Not TRUNCATE_EXISTING: the file is emptied only once it is known to be one.
    if (mode == kWrite && !SetEndOfFile(opened.Get())) throw FileError("open", path, LastSystemError());
    mHandle = reinterpret_cast<std::intptr_t>(opened.Release());
}

IPlatformByteStream::~IPlatformByteStream() { CloseHandle(ToHandle(mHandle)); }

std::uint64_t IPlatformByteStream::Length() const {
    LARGE_INTEGER length;
    if (!GetFileSizeEx(ToHandle(mHandle), &length)) throw FileError("measure", mFile.FullPath(), LastSystemError());
    return static_cast<std::uint64_t>(length.QuadPart);
}

std::size_t IPlatformByteStream::ReadBlock(void* buffer, std::size_t length) {
    std::size_t done = 0;
    while (done < length) {
        DWORD count = 0;
        if (!ReadFile(ToHandle(mHandle), static_cast<char*>(buffer) + done,
                      static_cast<DWORD>(std::min(length - done, kLongestBlock)), &count, nullptr))
            throw FileError("read", mFile.FullPath(), LastSystemError());
        if (count == 0) break;
        done += count;
    }
    return done;
}

void IPlatformByteStream::WriteBlock(const void* buffer, std::size_t length) {
    std::size_t done = 0;
    while (done < length) {
        DWORD count = 0;
        if (!WriteFile(ToHandle(mHandle), static_cast<const char*>(buffer) + done,
                       static_cast<DWORD>(std::min(length - done, kLongestBlock)), &count, nullptr))
            throw FileError("write", mFile.FullPath(), LastSystemError());
        done += count;
    }
}

}  // namespace filesupport
}  // namespace zelcore
