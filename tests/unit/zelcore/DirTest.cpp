#include <string>

#include <gtest/gtest.h>
#include <support/ThrowAwayFolder.h>
#include <zelcore/Dir.h>
#include <zelcore/FileError.h>
#include <zelcore/Utf.h>

#include "PlatformFiles.h"
#include "ScopedEnvironment.h"

using zelcore::ustring;
using zelcore::filesupport::Dir;
using zelcore::filesupport::FileError;
using zelcore::utility::UTF8to16;
using zeltests::ScopedEnvironment;
using zeltests::ThrowAwayFolder;

TEST(DirTest, SeparatorsAtTheEndDoNotCount) {
    EXPECT_EQ(Dir(UTF8to16("/a/b//")).FullPath(), UTF8to16("/a/b"));
    EXPECT_EQ(Dir(UTF8to16("/a/b/")), Dir(UTF8to16("/a/b")));
    EXPECT_EQ(Dir(UTF8to16("/")).FullPath(), UTF8to16("/"));
    EXPECT_EQ(Dir(UTF8to16("//")).FullPath(), UTF8to16("/"));
    EXPECT_TRUE(Dir(ustring()).FullPath().empty());
}

TEST(DirTest, MakesWhatIsMissingAboveForTheUserOnly) {
    const ThrowAwayFolder folder;
    const Dir dir(folder.UPath("a/b \xC3\xA9/c"));
    EXPECT_FALSE(dir.Exists());
    dir.Create();
    EXPECT_TRUE(dir.Exists());
    for (const char* const name : {"a", "a/b \xC3\xA9", "a/b \xC3\xA9/c"}) {
        EXPECT_TRUE(zeltests::IsForThisUserOnly(folder.Path(name))) << name;
    }
    EXPECT_NO_THROW(dir.Create()) << "a folder that is there is fine";
}

TEST(DirTest, FileInTheWayIsAnError) {
    const ThrowAwayFolder folder;
    zeltests::WriteFile(folder.Path("file"), "x");
    EXPECT_THROW(Dir(folder.UPath("file")).Create(), FileError);
    EXPECT_THROW(Dir(folder.UPath("file/below")).Create(), FileError);
    EXPECT_FALSE(Dir(folder.UPath("file")).Exists());
    EXPECT_EQ(zeltests::ReadFile(folder.Path("file")), "x");
}

TEST(DirTest, EndlessAndEmptyPathsAreErrors) {
    const ThrowAwayFolder folder;
    zeltests::WriteFile(folder.Path("file"), "x");
    std::string path = folder.Path("file");
    for (int i = 0; i < 100000; ++i) path += "/a";
    EXPECT_THROW(Dir(UTF8to16(path)).Create(), FileError);
    EXPECT_THROW(Dir().Create(), FileError);
    EXPECT_FALSE(Dir().Exists());
}

TEST(DirTest, ApplicationFolderNameCanBeChosen) {
    const ThrowAwayFolder folder;
    const ScopedEnvironment config(zeltests::kSettingsVariable, folder.GetPath().c_str());
    Dir::SetApplicationFolderName(UTF8to16("other"));
    EXPECT_EQ(Dir::PrefDir(), Dir(folder.UPath("other")));
    Dir::SetApplicationFolderName(UTF8to16("tessaly"));
    EXPECT_EQ(Dir::PrefDir(), Dir(folder.UPath("tessaly")));
}

TEST(DirTest, ChosenPreferencesFolderIsMadeAndWins) {
    const ThrowAwayFolder folder;
    const ScopedEnvironment config(zeltests::kSettingsVariable, folder.Path("config").c_str());
    Dir::SetPrefDir(Dir(folder.UPath("chosen/deep")));
    EXPECT_EQ(Dir::PrefDir(), Dir(folder.UPath("chosen/deep")));
    EXPECT_TRUE(Dir(folder.UPath("chosen/deep")).Exists());
    EXPECT_FALSE(Dir(folder.UPath("config")).Exists());
    Dir::SetPrefDir(Dir());
    EXPECT_EQ(Dir::PrefDir(), Dir(folder.UPath("config/tessaly")));
}

TEST(DirTest, PreferencesFolderThatCannotBeMadeIsAnError) {
    const ThrowAwayFolder folder;
    zeltests::WriteFile(folder.Path("file"), "x");
    Dir::SetPrefDir(Dir(folder.UPath("file/prefs")));
    EXPECT_THROW(Dir::PrefDir(), FileError);
    Dir::SetPrefDir(Dir());
}

TEST(DirTest, ApplicationFolderIsThatOfTheProgramUntilChosen) {
    const Dir own(UTF8to16(zeltests::GetProgramFolder()));
    EXPECT_EQ(Dir::AppDir(), own);
    Dir::SetAppDir(Dir(UTF8to16("/somewhere/else")));
    EXPECT_EQ(Dir::AppDir(), Dir(UTF8to16("/somewhere/else")));
    Dir::SetAppDir(Dir());
    EXPECT_EQ(Dir::AppDir(), own);
}
