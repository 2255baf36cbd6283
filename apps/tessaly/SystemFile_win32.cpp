#include "SystemFile.h"

#include <windows.h>

namespace tessaly {

namespace {

/// The usual reasons under the names that other platforms have for them, so that people read the same.
std::error_code TakeLastError() {
    const DWORD error = GetLastError();
    switch (error) {
        case ERROR_FILE_EXISTS:
        case ERROR_ALREADY_EXISTS:
            return std::make_error_code(std::errc::file_exists);
        case ERROR_FILE_NOT_FOUND:
        case ERROR_PATH_NOT_FOUND:
        case ERROR_INVALID_NAME:
            return std::make_error_code(std::errc::no_such_file_or_directory);
        case ERROR_ACCESS_DENIED:
        case ERROR_SHARING_VIOLATION:
        case ERROR_WRITE_PROTECT:
            return std::make_error_code(std::errc::permission_denied);
        case ERROR_DISK_FULL:
            return std::make_error_code(std::errc::no_space_on_device);
        case ERROR_FILENAME_EXCED_RANGE:
            return std::make_error_code(std::errc::filename_too_long);
        default:
            return std::error_code(static_cast<int>(error), std::system_category());
    }
}

std::error_code TryToOpen(const std::filesystem::path& path, DWORD disposition) {
    const DWORD sharing = FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE;
    const HANDLE file =
        CreateFileW(path.c_str(), GENERIC_WRITE, sharing, nullptr, disposition, FILE_ATTRIBUTE_NORMAL, nullptr);
    if (file == INVALID_HANDLE_VALUE) return TakeLastError();
    CloseHandle(file);
    return {};
}

}  // namespace

std::error_code SystemFile::CreateNew(const std::filesystem::path& path) { return TryToOpen(path, CREATE_NEW); }

std::error_code SystemFile::CheckWritable(const std::filesystem::path& path) { return TryToOpen(path, OPEN_EXISTING); }

}  // namespace tessaly
