#include <gtest/gtest.h>
#include <support/ThrowAwayFolder.h>
#include <zelcore/File.h>
#include <zelcore/FileError.h>
#include <zelcore/Utf.h>

#include "PlatformFiles.h"

using zelcore::ustring;
using zelcore::filesupport::Dir;
using zelcore::filesupport::File;
using zelcore::filesupport::FileError;
using zelcore::utility::UTF16to8;
using zelcore::utility::UTF8to16;

namespace {

std::string Title(const char* path) {
    const zelcore::utf8string title = UTF16to8(File(UTF8to16(path)).GetTitle());
    return std::string(title.begin(), title.end());
}

}  // namespace

TEST(FileTest, PathIsFolderAndName) {
    EXPECT_EQ(File(Dir(UTF8to16("/a/b")), UTF8to16("c")).FullPath(), UTF8to16("/a/b/c"));
    EXPECT_EQ(File(Dir(UTF8to16("/")), UTF8to16("c")).FullPath(), UTF8to16("/c"));
    EXPECT_TRUE(File().FullPath().empty());
    EXPECT_EQ(File(UTF8to16("/a/b/c")), File(Dir(UTF8to16("/a/b/")), UTF8to16("c")));
}

TEST(FileTest, NameIsBehindTheLastSeparator) {
    EXPECT_EQ(File(UTF8to16("/usr/lib/vst/Delay.so")).GetName(), UTF8to16("Delay.so"));
    EXPECT_EQ(File(UTF8to16("Delay.so")).GetName(), UTF8to16("Delay.so"));
    EXPECT_TRUE(File().GetName().empty());
}

TEST(FileTest, FolderIsBeforeTheLastSeparator) {
    EXPECT_EQ(UTF8to16("/usr/lib"), File(UTF8to16("/usr/lib/a.so")).GetDir().FullPath());
    EXPECT_EQ(UTF8to16("/"), File(UTF8to16("/a.so")).GetDir().FullPath());
    EXPECT_EQ(ustring(), File(UTF8to16("a.so")).GetDir().FullPath());
}

TEST(FileTest, TitleLacksTheLastExtensionOnly) {
    EXPECT_EQ(Title("/usr/lib/vst/Delay.so"), "Delay");
    EXPECT_EQ(Title("/usr/lib/vst.d/Delay"), "Delay");
    EXPECT_EQ(Title("/x/Delay 1.5.vst3"), "Delay 1.5");
    EXPECT_EQ(Title("/x/.vst"), ".vst");
    EXPECT_EQ(Title("/x/.vst.so"), ".vst");
    EXPECT_EQ(Title("/x/Delay."), "Delay");
    EXPECT_EQ(Title(""), "");
}

TEST(FileTest, LinksToFilesExistAndThoseToNothingDoNot) {
    const zeltests::ThrowAwayFolder folder;
    zeltests::WriteFile(folder.Path("file"), "x");
    if (!zeltests::MakeLink(folder.Path("file"), folder.Path("link"))) GTEST_SKIP() << "links cannot be made here";
    ASSERT_TRUE(zeltests::MakeLink(folder.Path("nowhere"), folder.Path("dangling")));
    EXPECT_TRUE(File(folder.UPath("link")).Exists());
    EXPECT_FALSE(File(folder.UPath("dangling")).Exists());
}

TEST(FileTest, OnlyRegularFilesExist) {
    const zeltests::ThrowAwayFolder folder;
    zeltests::WriteFile(folder.Path("file"), "x");
    EXPECT_TRUE(File(folder.UPath("file")).Exists());
    EXPECT_FALSE(File(folder.UPath("missing")).Exists());
    EXPECT_FALSE(File(folder.GetDir().FullPath()).Exists());
    EXPECT_FALSE(File().Exists());
}

TEST(FileTest, PathWithAZeroIsNotTheFileOfItsBeginning) {
    const zeltests::ThrowAwayFolder folder;
    zeltests::WriteFile(folder.Path("file"), "x");
    const File file(folder.UPath("file") + ustring(1, 0) + UTF8to16("rest"));
    EXPECT_FALSE(file.Exists());
    EXPECT_THROW(file.Delete(), FileError);
    EXPECT_TRUE(File(folder.UPath("file")).Exists());
}

TEST(FileTest, DeletesFiles) {
    const zeltests::ThrowAwayFolder folder;
    const std::string name =
        "f\xC3\xBC"
        "r";
    zeltests::WriteFile(folder.Path(name), "x");
    const File file(folder.UPath(name));
    EXPECT_TRUE(file.Exists());
    file.Delete();
    EXPECT_FALSE(file.Exists());
}

TEST(FileTest, DeletesTheLinkRatherThanItsTarget) {
    const zeltests::ThrowAwayFolder folder;
    zeltests::WriteFile(folder.Path("file"), "x");
    if (!zeltests::MakeLink(folder.Path("file"), folder.Path("link"))) GTEST_SKIP() << "links cannot be made here";
    File(folder.UPath("link")).Delete();
    EXPECT_FALSE(File(folder.UPath("link")).Exists());
    EXPECT_TRUE(File(folder.UPath("file")).Exists());
}

TEST(FileTest, DeletingWhatIsNotThereOrAFolderIsAnError) {
    const zeltests::ThrowAwayFolder folder;
    try {
        File(folder.UPath("missing")).Delete();
        FAIL() << "was deleted";
    } catch (const FileError& error) {
        EXPECT_EQ(error.GetSystemError(), zeltests::kNoSuchFile);
        EXPECT_EQ(error.what(), "could not delete '" + folder.Path("missing") +
                                    "': " + zeltests::GetSystemText(zeltests::kNoSuchFile));
    }
    EXPECT_THROW(File(folder.GetDir().FullPath()).Delete(), FileError);
    EXPECT_TRUE(folder.GetDir().Exists());
}
