#include "FileFacts.h"

#include <windows.h>

#include <filesystem>

#include <gtest/gtest.h>

namespace zeltests {

namespace {

/// From the beginning of 1601 to that of 1970.
constexpr std::int64_t kEpochMilliseconds = 11644473600000;

HANDLE Open(const std::string& path, DWORD access) {
    const HANDLE file =
        CreateFileW(std::filesystem::path(path).c_str(), access, FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE,
                    nullptr, OPEN_EXISTING, FILE_FLAG_BACKUP_SEMANTICS, nullptr);
    EXPECT_NE(file, INVALID_HANDLE_VALUE) << path;
    return file;
}

}  // namespace

std::uint64_t GetFileNumber(const std::string& path) {
    const HANDLE file = Open(path, FILE_READ_ATTRIBUTES);
    BY_HANDLE_FILE_INFORMATION facts = {};
    EXPECT_TRUE(GetFileInformationByHandle(file, &facts));
    CloseHandle(file);
    return (std::uint64_t(facts.nFileIndexHigh) << 32) | facts.nFileIndexLow;
}

void SetChangeTime(const std::string& path, std::int64_t milliseconds) {
    const auto ticks = static_cast<std::uint64_t>((milliseconds + kEpochMilliseconds) * 10000);
    const FILETIME time = {static_cast<DWORD>(ticks), static_cast<DWORD>(ticks >> 32)};
    const HANDLE file = Open(path, FILE_WRITE_ATTRIBUTES);
    EXPECT_TRUE(SetFileTime(file, nullptr, nullptr, &time));
    CloseHandle(file);
}

}  // namespace zeltests
