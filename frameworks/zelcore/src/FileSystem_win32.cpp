#include "FileSystem.h"

#include <algorithm>
#include <atomic>

#include <windows.h>

#include "NativePath_win32.h"
#include "OwnerOnly_win32.h"
#include "PathRules.h"

namespace zelcore {
namespace filesupport {

const int kFileTooLargeError = ERROR_FILE_TOO_LARGE;

namespace {

FileHandle OpenForQuestions(const ustring& path) {
    std::wstring native;
    if (!ToNativePath(path, native)) return FileHandle(INVALID_HANDLE_VALUE);
    return OpenShared(native, FILE_READ_ATTRIBUTES, OPEN_EXISTING);
}

/// The file that a link leads to, so that replacing the content does not cut the link; `path` for everything else.
std::wstring ResolveLink(const std::wstring& path, HANDLE opened) {
    const DWORD attributes = GetFileAttributesW(path.c_str());
    if (attributes == INVALID_FILE_ATTRIBUTES || (attributes & FILE_ATTRIBUTE_REPARSE_POINT) == 0) return path;
    std::wstring target(32768, 0);
    const DWORD length = GetFinalPathNameByHandleW(opened, target.data(), static_cast<DWORD>(target.size()), 0);
    if (length == 0 || length >= target.size()) return path;
    target.resize(length);
    return target;
}

bool IsReadOnly(const std::wstring& path) {
    const DWORD attributes = GetFileAttributesW(path.c_str());
    return attributes != INVALID_FILE_ATTRIBUTES && (attributes & FILE_ATTRIBUTE_READONLY) != 0;
}

/// A new file beside the one it is to replace. What was not renamed goes with the object.
class TemporaryFile {
public:
    TemporaryFile(const std::wstring& target, const ustring& reportedPath)
        : mReportedPath(reportedPath), mHandle(INVALID_HANDLE_VALUE) {
        // The name does not contain the target's, which may already be as long as a name can be.
        static std::atomic<unsigned> sCounter{0};
        const std::wstring folder = target.substr(0, target.find_last_of(L"\\/") + 1);
        HANDLE handle = INVALID_HANDLE_VALUE;
        do {
            mPath = folder + std::wstring(kTemporaryPrefix.begin(), kTemporaryPrefix.end()) +
                    std::to_wstring(GetCurrentProcessId()) + L"-" + std::to_wstring(sCounter++) +
                    std::wstring(kTemporarySuffix.begin(), kTemporarySuffix.end());
            handle = CreateFileW(mPath.c_str(), GENERIC_WRITE, FILE_SHARE_READ | FILE_SHARE_DELETE, nullptr, CREATE_NEW,
                                 FILE_ATTRIBUTE_NORMAL, nullptr);
        } while (handle == INVALID_HANDLE_VALUE && GetLastError() == ERROR_FILE_EXISTS);
        if (handle == INVALID_HANDLE_VALUE) {
            const int error = LastSystemError();
            mPath.clear();
            throw FileError("write", mReportedPath, error);
        }
        mHandle = handle;
    }
    ~TemporaryFile() {
        if (mHandle != INVALID_HANDLE_VALUE) CloseHandle(mHandle);
        if (!mPath.empty()) DeleteFileW(mPath.c_str());
    }
    TemporaryFile(const TemporaryFile&) = delete;
    TemporaryFile& operator=(const TemporaryFile&) = delete;

    const std::wstring& GetPath() const { return mPath; }

    void Write(std::string_view bytes) {
        constexpr std::size_t kLongestWrite = 1u << 30;
        while (!bytes.empty()) {
            DWORD written = 0;
            if (!WriteFile(mHandle, bytes.data(), static_cast<DWORD>(std::min(bytes.size(), kLongestWrite)), &written,
                           nullptr))
                throw FileError("write", mReportedPath, LastSystemError());
            bytes.remove_prefix(written);
        }
    }

    /// Without it the new name may be on the disk before the content is.
    void WaitForDisk() {
        // Some file systems cannot say when; the content matters more than the promise.
        if (!FlushFileBuffers(mHandle) && GetLastError() != ERROR_INVALID_FUNCTION &&
            GetLastError() != ERROR_NOT_SUPPORTED)
            throw FileError("write", mReportedPath, LastSystemError());
    }

    void RenameTo(const std::wstring& target) {
        const HANDLE handle = mHandle;
        mHandle = INVALID_HANDLE_VALUE;
        if (!CloseHandle(handle)) throw FileError("write", mReportedPath, LastSystemError());
        if (!Replace(target)) throw FileError("write", mReportedPath, LastSystemError());
        mPath.clear();
    }

private:
    /// Whoever has the old file open keeps it from being replaced, be it to read it or to look for viruses. That lasts
    /// moments; for longer than these the file is in use.
    bool Replace(const std::wstring& target) {
        constexpr ULONGLONG kPatienceMilliseconds = 2000;
        const ULONGLONG begin = GetTickCount64();
        for (DWORD pause = 0;; pause = std::min<DWORD>(pause + 1, 20)) {
            if (MoveFileExW(mPath.c_str(), target.c_str(), MOVEFILE_REPLACE_EXISTING | MOVEFILE_WRITE_THROUGH))
                return true;
            const DWORD error = GetLastError();
            const bool inUse = error == ERROR_ACCESS_DENIED || error == ERROR_SHARING_VIOLATION;
            if (!inUse || GetTickCount64() - begin > kPatienceMilliseconds) {
                SetLastError(error);
                return false;
            }
            Sleep(pause);
        }
    }

    ustring mReportedPath;
    std::wstring mPath;
    HANDLE mHandle;
};

}  // namespace

bool IsRegularFile(const ustring& path) {
    const FileHandle file = OpenForQuestions(path);
    return file.IsOpen() && IsRegularFile(file.Get());
}

bool IsFolder(const ustring& path) {
    const FileHandle folder = OpenForQuestions(path);
    return folder.IsOpen() && IsFolder(folder.Get());
}

void DeleteRegularFile(const ustring& path) {
    if (!DeleteFileW(NativePath(path, "delete").c_str())) throw FileError("delete", path, LastSystemError());
}

void MakeFolder(const ustring& path) {
    const std::wstring native = NativePath(path, "make the folder");
    OwnerOnly ownerOnly;
    if (CreateDirectoryW(native.c_str(), ownerOnly.Get())) return;
    const int error = LastSystemError();
    if (!IsFolder(path)) throw FileError("make the folder", path, error);
}

void ReplaceFile(const ustring& path, std::string_view bytes, Durability durability) {
    std::wstring target = NativePath(path, "write");
    {
        const FileHandle old = OpenShared(target, FILE_READ_ATTRIBUTES, OPEN_EXISTING);
        if (old.IsOpen() && IsFolder(old.Get())) throw FileError("write", path, kIsFolderError);
        if (old.IsOpen() && !IsRegularFile(old.Get())) throw FileError("write as a regular file", path, 0);
        if (old.IsOpen() && IsReadOnly(target)) throw FileError("write", path, ERROR_ACCESS_DENIED);
        if (old.IsOpen()) target = ResolveLink(target, old.Get());
    }
    TemporaryFile temporary(target, path);
    temporary.Write(bytes);
    CopyPermissions(target, temporary.GetPath());
    if (durability == kOutlivesPower) temporary.WaitForDisk();
    temporary.RenameTo(target);
}

bool RenameToFreeName(const ustring& from, const ustring& to) {
    if (MoveFileExW(NativePath(from, "rename").c_str(), NativePath(to, "rename").c_str(), MOVEFILE_WRITE_THROUGH))
        return true;
    const int error = LastSystemError();
    if (error == ERROR_ALREADY_EXISTS || error == ERROR_FILE_EXISTS) return false;
    throw FileError("rename", from, error);
}

}  // namespace filesupport
}  // namespace zelcore
