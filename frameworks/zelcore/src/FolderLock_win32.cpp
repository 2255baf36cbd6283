#include <zelcore/FolderLock.h>

#include <windows.h>

#include "NativePath_win32.h"

namespace zelcore {
namespace filesupport {

namespace {

/// How long whoever waits sleeps between two tries: the system wakes nobody for a file that has become free.
constexpr DWORD kPauseMilliseconds = 10;

/// An open folder that nobody else may open for making files in it by such a handle, which nobody does but another
/// lock. Making files in it and reading it goes on as ever.
HANDLE OpenAlone(const std::wstring& folder) {
    return CreateFileW(folder.c_str(), FILE_ADD_FILE, FILE_SHARE_READ | FILE_SHARE_DELETE, nullptr, OPEN_EXISTING,
                       FILE_FLAG_BACKUP_SEMANTICS, nullptr);
}

}  // namespace

FolderLock::FolderLock(const Dir& folder) : mFolder(folder), mHandle(-1) {}

FolderLock::~FolderLock() {
    if (mHandle != -1) CloseHandle(reinterpret_cast<HANDLE>(mHandle));
}

bool FolderLock::TryAcquire() { return Acquire(false); }

bool FolderLock::Acquire() { return Acquire(true); }

bool FolderLock::Acquire(bool wait) {
    if (mHandle != -1) return true;
    std::wstring path;
    if (!ToNativePath(mFolder.FullPath(), path)) return false;
    HANDLE handle = OpenAlone(path);
    while (handle == INVALID_HANDLE_VALUE && wait && GetLastError() == ERROR_SHARING_VIOLATION) {
        Sleep(kPauseMilliseconds);
        handle = OpenAlone(path);
    }
    FileHandle folder(handle);
    if (!folder.IsOpen() || !IsFolder(folder.Get())) return false;
    mHandle = reinterpret_cast<std::intptr_t>(folder.Release());
    return true;
}

}  // namespace filesupport
}  // namespace zelcore
