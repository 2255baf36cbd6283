#pragma once

#include <string>
#include <string_view>

#include <windows.h>

#include <zelcore/FileError.h>
#include <zelcore/ustring.h>

namespace zelcore {
namespace filesupport {

/// The system's wide text and ours are the same UTF-16, of two types.
inline std::wstring ToWide(const ustring& text) { return std::wstring(text.begin(), text.end()); }
inline ustring FromWide(std::wstring_view text) { return ustring(text.begin(), text.end()); }

inline int LastSystemError() { return static_cast<int>(GetLastError()); }
/// The system's number for "not with a folder", for which this compiler's headers have no name.
constexpr int kIsFolderError = 336;

/// The path as system calls take it. A path with a zero inside is none: the system would silently use its beginning.
/// Paths beyond what the system takes from programs in general are given in the form that has no such bound.
bool ToNativePath(const ustring& path, std::wstring& native);
/// The same for operations that fail by FileError.
std::wstring NativePath(const ustring& path, const char* operation);

/// Closes a handle that CreateFileW gave.
class FileHandle {
public:
    explicit FileHandle(HANDLE handle) : mHandle(handle) {}
    ~FileHandle() { Close(); }
    FileHandle(const FileHandle&) = delete;
    FileHandle& operator=(const FileHandle&) = delete;

    HANDLE Get() const { return mHandle; }
    bool IsOpen() const { return mHandle != INVALID_HANDLE_VALUE; }
    bool Close() {
        const HANDLE handle = Release();
        return handle == INVALID_HANDLE_VALUE || CloseHandle(handle);
    }
    HANDLE Release() {
        const HANDLE handle = mHandle;
        mHandle = INVALID_HANDLE_VALUE;
        return handle;
    }

private:
    HANDLE mHandle;
};

/// Opens what a link leads to rather than the link, folders too, in no one's way: others may read, write, replace and
/// delete it meanwhile.
FileHandle OpenShared(const std::wstring& path, DWORD access, DWORD disposition);
/// What is open is a folder; is a regular file, and no device or pipe.
bool IsFolder(HANDLE handle);
bool IsRegularFile(HANDLE handle);

}  // namespace filesupport
}  // namespace zelcore
