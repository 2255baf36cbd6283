#include "PlatformFiles.h"

#include <algorithm>
#include <filesystem>

#include <gtest/gtest.h>
#include <windows.h>

#include <aclapi.h>

namespace zeltests {

const int kNoSuchFile = ERROR_FILE_NOT_FOUND;
const int kNoSuchFolder = ERROR_PATH_NOT_FOUND;
const int kIsAFolder = 336;  // ERROR_DIRECTORY_NOT_SUPPORTED
const int kInvalidPath = ERROR_INVALID_NAME;
const int kFileTooLarge = ERROR_FILE_TOO_LARGE;
const int kDiskFull = ERROR_DISK_FULL;
const int kNoPermission = ERROR_ACCESS_DENIED;
const int kDeviceBroken = ERROR_IO_DEVICE;
const char* const kSettingsVariable = "APPDATA";

std::string GetSystemText(int error) {
    char text[512];
    const DWORD length = FormatMessageA(FORMAT_MESSAGE_FROM_SYSTEM | FORMAT_MESSAGE_IGNORE_INSERTS, nullptr,
                                        static_cast<DWORD>(error), 0, text, sizeof text, nullptr);
    EXPECT_GT(length, 0u) << error;
    const std::string line(text, length);
    return line.substr(0, line.find_last_not_of(" .\r\n") + 1);
}

bool MakeLink(const std::string& target, const std::string& path) {
    constexpr DWORD kWithoutPrivilege = 2;
    std::wstring native = ToPath(target).wstring();
    std::replace(native.begin(), native.end(), L'/', L'\\');
    const std::filesystem::path link = ToPath(path);
    // Not all systems that say yes make one.
    return CreateSymbolicLinkW(link.c_str(), native.c_str(), kWithoutPrivilege) &&
           GetFileAttributesW(link.c_str()) != INVALID_FILE_ATTRIBUTES;
}

bool IsForThisUserOnly(const std::string& folder) {
    ACL* list = nullptr;
    PSECURITY_DESCRIPTOR descriptor = nullptr;
    EXPECT_EQ(GetNamedSecurityInfoW(ToPath(folder).c_str(), SE_FILE_OBJECT, DACL_SECURITY_INFORMATION, nullptr, nullptr,
                                    &list, nullptr, &descriptor),
              DWORD{ERROR_SUCCESS});
    bool others = list == nullptr;
    for (const WELL_KNOWN_SID_TYPE group : {WinWorldSid, WinBuiltinUsersSid, WinAuthenticatedUserSid}) {
        unsigned char bytes[SECURITY_MAX_SID_SIZE];
        DWORD size = sizeof bytes;
        EXPECT_TRUE(CreateWellKnownSid(group, nullptr, bytes, &size));
        for (DWORD i = 0; list != nullptr && i < list->AceCount; ++i) {
            void* entry = nullptr;
            EXPECT_TRUE(GetAce(list, i, &entry));
            const auto* const allowed = static_cast<const ACCESS_ALLOWED_ACE*>(entry);
            others = others || (allowed->Header.AceType == ACCESS_ALLOWED_ACE_TYPE && allowed->Mask != 0 &&
                                EqualSid(const_cast<DWORD*>(&allowed->SidStart), bytes));
        }
    }
    LocalFree(descriptor);
    return !others;
}

std::string GetProgramFolder() {
    wchar_t program[4096];
    EXPECT_GT(GetModuleFileNameW(nullptr, program, 4096), 0u);
    const std::u8string text = std::filesystem::path(program).u8string();
    const std::string path(text.begin(), text.end());
    return path.substr(0, path.rfind('\\'));
}

}  // namespace zeltests
