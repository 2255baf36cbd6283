#include <filesystem>
#include <string>

#include <gtest/gtest.h>
#include <support/ThrowAwayFolder.h>
#include <support/WaitFor.h>
#include <windows.h>

#include <aclapi.h>
#include <sddl.h>
#include <zelcore/FileError.h>
#include <zelcore/FileUtils.h>
#include <zelcore/Utf.h>

#include "PlatformFiles.h"
#include "support/ChildRole_win32.h"
#include "support/Handles_win32.h"

using zelcore::filesupport::File;
using zelcore::filesupport::FileError;
using zelcore::utility::FileUtils;
using zelcore::utility::UTF8to16;
using zeltests::CountEntries;
using zeltests::ThrowAwayFolder;

namespace {

const std::string kShort(50000, 'A');
const std::string kLong(150000, 'B');

/// In a process of its own: writes until it is ended.
const zeltests::ChildRole kWriter("write-file", [](const std::string& path) {
    const zelcore::ustring file = UTF8to16(path);
    for (bool even = true;; even = !even)
        FileUtils::SimpleWriteStringToFile(file, even ? std::string(150000, 'B') : std::string(50000, 'A'));
});

/// Who may do what with a file, as text.
std::wstring ReadPermissions(const std::string& path) {
    PSECURITY_DESCRIPTOR descriptor = nullptr;
    EXPECT_EQ(GetNamedSecurityInfoW(zeltests::ToPath(path).c_str(), SE_FILE_OBJECT, DACL_SECURITY_INFORMATION, nullptr,
                                    nullptr, nullptr, nullptr, &descriptor),
              DWORD{ERROR_SUCCESS});
    wchar_t* text = nullptr;
    EXPECT_TRUE(ConvertSecurityDescriptorToStringSecurityDescriptorW(descriptor, SDDL_REVISION_1,
                                                                     DACL_SECURITY_INFORMATION, &text, nullptr));
    const std::wstring permissions = text;
    LocalFree(text);
    LocalFree(descriptor);
    return permissions;
}

/// Takes the file away from everybody but its owner.
void KeepToOwner(const std::string& path) {
    PSID owner = nullptr;
    PSECURITY_DESCRIPTOR present = nullptr;
    ASSERT_EQ(GetNamedSecurityInfoW(zeltests::ToPath(path).c_str(), SE_FILE_OBJECT, OWNER_SECURITY_INFORMATION, &owner,
                                    nullptr, nullptr, nullptr, &present),
              DWORD{ERROR_SUCCESS});
    wchar_t* name = nullptr;
    ASSERT_TRUE(ConvertSidToStringSidW(owner, &name));
    PSECURITY_DESCRIPTOR wanted = nullptr;
    ASSERT_TRUE(ConvertStringSecurityDescriptorToSecurityDescriptorW(
        (L"D:P(A;;FA;;;" + std::wstring(name) + L")").c_str(), SDDL_REVISION_1, &wanted, nullptr));
    EXPECT_TRUE(SetFileSecurityW(zeltests::ToPath(path).c_str(), DACL_SECURITY_INFORMATION, wanted));
    LocalFree(wanted);
    LocalFree(name);
    LocalFree(present);
}

}  // namespace

TEST(FileUtilsTest, FileThatIsInUseStaysAndNothingIsLeftBeside) {
    if (zeltests::IsWine()) GTEST_SKIP() << "wine replaces files that are in use";
    if (zeltests::IsWine()) GTEST_SKIP() << "wine replaces files that are open";
    const ThrowAwayFolder folder;
    zeltests::WriteFile(folder.Path("file"), "old");
    const HANDLE user = CreateFileW(zeltests::ToPath(folder.Path("file")).c_str(), GENERIC_READ, FILE_SHARE_READ,
                                    nullptr, OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL, nullptr);
    ASSERT_NE(user, INVALID_HANDLE_VALUE);
    EXPECT_THROW(FileUtils::SimpleWriteStringToFile(folder.UPath("file"), kShort), FileError);
    EXPECT_EQ(zeltests::ReadFile(folder.Path("file")), "old");
    EXPECT_EQ(CountEntries(folder), 1u);
    CloseHandle(user);
    FileUtils::SimpleWriteStringToFile(folder.UPath("file"), kShort);
    EXPECT_EQ(zeltests::ReadFile(folder.Path("file")), kShort);
}

TEST(FileUtilsTest, FileThatMustNotBeWrittenStays) {
    const ThrowAwayFolder folder;
    zeltests::WriteFile(folder.Path("file"), "old");
    const std::filesystem::path path = zeltests::ToPath(folder.Path("file"));
    ASSERT_TRUE(SetFileAttributesW(path.c_str(), FILE_ATTRIBUTE_READONLY));
    EXPECT_THROW(FileUtils::SimpleWriteStringToFile(folder.UPath("file"), kShort), FileError);
    EXPECT_TRUE(SetFileAttributesW(path.c_str(), FILE_ATTRIBUTE_NORMAL));
    EXPECT_EQ(zeltests::ReadFile(folder.Path("file")), "old");
    EXPECT_EQ(CountEntries(folder), 1u);
}

TEST(FileUtilsTest, DevicesAreNotWritten) {
    EXPECT_THROW(FileUtils::SimpleWriteStringToFile(UTF8to16("\\\\.\\NUL"), "x"), FileError);
}

TEST(FileUtilsTest, PermissionsOfTheOldFileStay) {
    const ThrowAwayFolder folder;
    zeltests::WriteFile(folder.Path("file"), "old");
    const std::wstring usual = ReadPermissions(folder.Path("file"));
    KeepToOwner(folder.Path("file"));
    const std::wstring chosen = ReadPermissions(folder.Path("file"));
    ASSERT_NE(chosen, usual);
    FileUtils::SimpleWriteStringToFile(folder.UPath("file"), "new");
    EXPECT_EQ(ReadPermissions(folder.Path("file")), chosen);
}

TEST(FileUtilsTest, KilledWriterLeavesAWholeFile) {
    const ThrowAwayFolder folder;
    const zelcore::ustring path = folder.UPath("file");
    for (int round = 0; round < 5; ++round) {
        FileUtils::SimpleWriteStringToFile(path, kShort);
        bool wrote = false;
        {
            const zeltests::ChildRole::Process child = kWriter.Start(folder.Path("file"));
            wrote = zeltests::WaitFor([&] { return FileUtils::ReadFileToString(File(path), 1 << 20) == kLong; });
        }
        ASSERT_TRUE(wrote);
        const std::string left = FileUtils::ReadFileToString(File(path), 1 << 20);
        EXPECT_TRUE(left == kShort || left == kLong) << left.size();
    }
}
