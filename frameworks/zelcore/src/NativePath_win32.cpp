#include "NativePath_win32.h"

namespace zelcore {
namespace filesupport {

namespace {

/// A folder's path must leave room for a short file name in it; longer ones need the other form.
constexpr std::size_t kLongestPlainPath = MAX_PATH - 13;

std::wstring FullPath(const std::wstring& path) {
    std::wstring full(path.size() + MAX_PATH, 0);
    for (;;) {
        const DWORD length = GetFullPathNameW(path.c_str(), static_cast<DWORD>(full.size()), full.data(), nullptr);
        const bool fits = length < full.size();
        full.resize(length);
        if (fits) return full;
    }
}

bool HasPrefix(const std::wstring& path, std::wstring_view prefix) {
    return path.compare(0, prefix.size(), prefix) == 0;
}

std::wstring WithoutBound(const std::wstring& path) {
    const std::wstring full = FullPath(path);
    if (HasPrefix(full, L"\\\\?\\") || HasPrefix(full, L"\\\\.\\") || full.empty()) return path;
    if (HasPrefix(full, L"\\\\")) return L"\\\\?\\UNC" + full.substr(1);
    return L"\\\\?\\" + full;
}

}  // namespace

bool ToNativePath(const ustring& path, std::wstring& native) {
    if (path.find(static_cast<unsigned short>(0)) != ustring::npos) return false;
    native = ToWide(path);
    if (native.size() > kLongestPlainPath) native = WithoutBound(native);
    return true;
}

std::wstring NativePath(const ustring& path, const char* operation) {
    std::wstring native;
    if (!ToNativePath(path, native)) throw FileError(operation, path, ERROR_INVALID_NAME);
    return native;
}

FileHandle OpenShared(const std::wstring& path, DWORD access, DWORD disposition) {
    return FileHandle(CreateFileW(path.c_str(), access, FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE, nullptr,
                                  disposition, FILE_ATTRIBUTE_NORMAL | FILE_FLAG_BACKUP_SEMANTICS, nullptr));
}

bool IsFolder(HANDLE handle) {
    BY_HANDLE_FILE_INFORMATION information;
    return GetFileInformationByHandle(handle, &information) &&
           (information.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY) != 0;
}

bool IsRegularFile(HANDLE handle) { return GetFileType(handle) == FILE_TYPE_DISK && !IsFolder(handle); }

}  // namespace filesupport
}  // namespace zelcore
