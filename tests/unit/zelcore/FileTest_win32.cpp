#include <gtest/gtest.h>
#include <support/ThrowAwayFolder.h>
#include <zelcore/File.h>
#include <zelcore/Utf.h>

using zelcore::filesupport::Dir;
using zelcore::filesupport::File;
using zelcore::utility::UTF8to16;

TEST(FileTest, DevicesAreNoFiles) { EXPECT_FALSE(File(UTF8to16("\\\\.\\NUL")).Exists()); }

TEST(FileTest, NamesAreTheSameInCapitalsAndSmallLetters) {
    const zeltests::ThrowAwayFolder folder;
    zeltests::WriteFile(folder.Path("File.txt"), "x");
    EXPECT_TRUE(File(folder.UPath("fILE.TXT")).Exists());
}

TEST(FileTest, PathGoesOnWithTheSeparatorThatItHas) {
    EXPECT_EQ(File(Dir(UTF8to16("C:\\a")), UTF8to16("b")).FullPath(), UTF8to16("C:\\a\\b"));
    EXPECT_EQ(File(Dir(UTF8to16("C:/a")), UTF8to16("b")).FullPath(), UTF8to16("C:/a/b"));
    EXPECT_EQ(File(Dir(UTF8to16("C:\\")), UTF8to16("b")).FullPath(), UTF8to16("C:\\b"));
    EXPECT_EQ(File(Dir(UTF8to16("a")), UTF8to16("b")).FullPath(), UTF8to16("a\\b"));
}

TEST(FileTest, FolderOfAFileKnowsDrivesAndBothSeparators) {
    EXPECT_EQ(File(UTF8to16("C:\\a.dll")).GetDir().FullPath(), UTF8to16("C:\\"));
    EXPECT_EQ(File(UTF8to16("C:\\a/b.dll")).GetDir().FullPath(), UTF8to16("C:\\a"));
    EXPECT_EQ(File(UTF8to16("C:\\a/b.dll")).GetName(), UTF8to16("b.dll"));
    EXPECT_EQ(File(UTF8to16("C:b.dll")).GetName(), UTF8to16("b.dll"));
    EXPECT_EQ(File(UTF8to16("\\\\server\\share\\b.dll")).GetDir().FullPath(), UTF8to16("\\\\server\\share"));
}
