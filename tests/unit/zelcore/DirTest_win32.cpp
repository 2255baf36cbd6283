#include <filesystem>
#include <string>

#include <gtest/gtest.h>
#include <windows.h>

#include <shlobj.h>
#include <support/ThrowAwayFolder.h>
#include <zelcore/Dir.h>
#include <zelcore/Utf.h>

#include "ScopedEnvironment.h"

using zelcore::filesupport::Dir;
using zelcore::utility::UTF8to16;
using zeltests::ScopedEnvironment;
using zeltests::ThrowAwayFolder;

TEST(DirTest, PreferencesAreInTheRoamingProfileUnlessTheEnvironmentNamesAnotherFolder) {
    const std::string name = "zeltest-" + std::to_string(GetCurrentProcessId());
    wchar_t roaming[MAX_PATH];
    ASSERT_TRUE(SUCCEEDED(SHGetFolderPathW(nullptr, CSIDL_APPDATA, nullptr, SHGFP_TYPE_CURRENT, roaming)));
    const std::filesystem::path expected = std::filesystem::path(roaming) / name;
    Dir::SetApplicationFolderName(UTF8to16(name));
    for (const char* const unusable : {static_cast<const char*>(nullptr), "relative/folder"}) {
        const ScopedEnvironment settings("APPDATA", unusable);
        EXPECT_EQ(Dir::PrefDir(), Dir(UTF8to16(std::filesystem::path(roaming).string() + "\\" + name)));
        EXPECT_TRUE(std::filesystem::is_directory(expected));
        std::filesystem::remove(expected);
    }
    Dir::SetApplicationFolderName(UTF8to16("tessaly"));
    const ThrowAwayFolder folder;
    const ScopedEnvironment settings("APPDATA", folder.Path("settings").c_str());
    EXPECT_EQ(Dir::PrefDir(), Dir(folder.UPath("settings/tessaly")));
}

TEST(DirTest, BothSeparatorsCountAndRootsStay) {
    EXPECT_EQ(Dir(UTF8to16("C:\\a\\b/\\")).FullPath(), UTF8to16("C:\\a\\b"));
    EXPECT_EQ(Dir(UTF8to16("C:\\")).FullPath(), UTF8to16("C:\\"));
    EXPECT_EQ(Dir(UTF8to16("C:/")).FullPath(), UTF8to16("C:/"));
    EXPECT_EQ(Dir(UTF8to16("\\\\server\\share\\")).FullPath(), UTF8to16("\\\\server\\share"));
}

TEST(DirTest, ServerThatIsNotThereIsAnError) {
    EXPECT_THROW(Dir(UTF8to16("\\\\server.invalid\\share\\a\\b")).Create(), std::exception);
}

TEST(DirTest, PathsBeyondTheUsualBoundCanBeMade) {
    const ThrowAwayFolder folder;
    std::string name = "deep";
    while (name.size() < 400) name += "/" + std::string(50, 'd');
    const Dir dir(folder.UPath(name));
    dir.Create();
    EXPECT_TRUE(dir.Exists());
}
