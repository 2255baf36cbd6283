#include <windows.h>

#include <filesystem>
#include <string>

#include "FileSystem.h"

namespace zelcore {
namespace filesupport {

namespace {

bool IsRunning(unsigned long process) {
    const HANDLE handle = OpenProcess(SYNCHRONIZE, FALSE, process);
    if (handle == nullptr) return GetLastError() != ERROR_INVALID_PARAMETER;
    const bool isRunning = WaitForSingleObject(handle, 0) == WAIT_TIMEOUT;
    CloseHandle(handle);
    return isRunning;
}

}  // namespace

void RemoveLeftovers(const ustring& folder) noexcept try {
    const std::filesystem::path path(std::wstring(folder.begin(), folder.end()));
    std::error_code ignored;
    for (const auto& entry : std::filesystem::directory_iterator(path, ignored)) {
        const unsigned long owner = FindTemporaryOwner(entry.path().filename().string());
        if (owner != 0 && !IsRunning(owner)) std::filesystem::remove(entry.path(), ignored);
    }
} catch (const std::exception&) {
    // A name that cannot be converted, or no memory for one: the next time will do.
}

}  // namespace filesupport
}  // namespace zelcore
