#include <atomic>
#include <filesystem>
#include <string>
#include <thread>
#include <vector>

#include <gtest/gtest.h>
#include <support/ThrowAwayFolder.h>
#include <support/WaitFor.h>
#include <zelcore/FileError.h>
#include <zelcore/FileUtils.h>
#include <zelcore/Utf.h>

#include "PlatformFiles.h"

using zelcore::filesupport::File;
using zelcore::filesupport::FileError;
using zelcore::utility::FileUtils;
using zelcore::utility::UTF8to16;
using zeltests::CountEntries;
using zeltests::ThrowAwayFolder;

namespace {

const std::string kShort(50000, 'A');
const std::string kLong(150000, 'B');

}  // namespace

TEST(FileUtilsTest, WritesNewFilesAndReplacesOldOnes) {
    const ThrowAwayFolder folder;
    FileUtils::SimpleWriteStringToFile(folder.UPath("\xC3\xA4.txt"), "first and longer");
    EXPECT_EQ(zeltests::ReadFile(folder.Path("\xC3\xA4.txt")), "first and longer");
    FileUtils::SimpleWriteStringToFile(folder.UPath("\xC3\xA4.txt"), std::string_view("a\0b", 3));
    EXPECT_EQ(zeltests::ReadFile(folder.Path("\xC3\xA4.txt")), std::string("a\0b", 3));
    FileUtils::SimpleWriteStringToFile(folder.UPath("\xC3\xA4.txt"), "");
    EXPECT_EQ(zeltests::ReadFile(folder.Path("\xC3\xA4.txt")), "");
    EXPECT_EQ(CountEntries(folder), 1u);
}

TEST(FileUtilsTest, FolderAndMissingFolderAreErrors) {
    const ThrowAwayFolder folder;
    std::filesystem::create_directory(zeltests::ToPath(folder.Path("sub")));
    EXPECT_THROW(FileUtils::SimpleWriteStringToFile(folder.UPath("sub"), "x"), FileError);
    EXPECT_THROW(FileUtils::SimpleWriteStringToFile(folder.UPath("missing/file"), "x"), FileError);
    EXPECT_THROW(FileUtils::SimpleWriteStringToFile(zelcore::ustring(), "x"), FileError);
    EXPECT_EQ(CountEntries(folder), 1u);
}

TEST(FileUtilsTest, NameMayBeAsLongAsNamesCanBe) {
    const ThrowAwayFolder folder;
    const std::string name(255, 'n');
    FileUtils::SimpleWriteStringToFile(folder.UPath(name), "x");
    EXPECT_EQ(zeltests::ReadFile(folder.Path(name)), "x");
}

TEST(FileUtilsTest, LinkStaysALinkAndItsTargetIsReplaced) {
    const ThrowAwayFolder folder;
    std::filesystem::create_directory(zeltests::ToPath(folder.Path("sub")));
    zeltests::WriteFile(folder.Path("sub/target"), "old");
    if (!zeltests::MakeLink("sub/target", folder.Path("link"))) GTEST_SKIP() << "links cannot be made here";
    FileUtils::SimpleWriteStringToFile(folder.UPath("link"), "new");
    EXPECT_TRUE(std::filesystem::is_symlink(zeltests::ToPath(folder.Path("link"))));
    EXPECT_EQ(zeltests::ReadFile(folder.Path("sub/target")), "new");
}

TEST(FileUtilsTest, ReadersSeeTheOldContentOrTheNewNeverAMixture) {
    const ThrowAwayFolder folder;
    const zelcore::ustring path = folder.UPath("file");
    FileUtils::SimpleWriteStringToFile(path, kShort);
    std::atomic<bool> stop{false};
    std::vector<std::thread> writers;
    for (const std::string* const content : {&kShort, &kLong})
        writers.emplace_back([&, content] {
            while (!stop) FileUtils::SimpleWriteStringToFile(path, *content);
        });
    int shortOnes = 0;
    int longOnes = 0;
    int others = 0;
    EXPECT_TRUE(zeltests::WaitFor([&] {
        const std::string seen = FileUtils::ReadFileToString(File(path), 1 << 20);
        ++(seen == kShort ? shortOnes : seen == kLong ? longOnes : others);
        return shortOnes > 20 && longOnes > 20;
    }));
    stop = true;
    for (std::thread& writer : writers) writer.join();
    EXPECT_EQ(others, 0);
    EXPECT_EQ(CountEntries(folder), 1u);
}

TEST(FileUtilsTest, ReadsWholeFilesUpToTheLimit) {
    const ThrowAwayFolder folder;
    zeltests::WriteFile(folder.Path("file"), kShort);
    zeltests::WriteFile(folder.Path("empty"), "");
    EXPECT_EQ(FileUtils::ReadFileToString(File(folder.UPath("file")), kShort.size()), kShort);
    EXPECT_EQ(FileUtils::ReadFileToString(File(folder.UPath("empty")), 0), "");
    try {
        FileUtils::ReadFileToString(File(folder.UPath("file")), kShort.size() - 1);
        ADD_FAILURE() << "was read";
    } catch (const FileError& error) {
        EXPECT_EQ(error.GetSystemError(), zeltests::kFileTooLarge);
    }
    EXPECT_THROW(FileUtils::ReadFileToString(File(folder.UPath("missing")), 10), FileError);
    EXPECT_THROW(FileUtils::ReadFileToString(File(folder.GetDir().FullPath()), 10), FileError);
}

TEST(FileUtilsTest, KeepAsideNeverReplacesAnything) {
    const ThrowAwayFolder folder;
    const zelcore::ustring suffix = UTF8to16(".bad");
    const std::vector<std::string> names = {"list.xml.bad", "list.xml.bad2", "list.xml.bad3"};
    for (const std::string& name : names) {
        zeltests::WriteFile(folder.Path("list.xml"), "content of " + name);
        EXPECT_EQ(FileUtils::KeepAside(File(folder.UPath("list.xml")), suffix).FullPath(), folder.UPath(name));
        EXPECT_FALSE(File(folder.UPath("list.xml")).Exists());
    }
    for (const std::string& name : names) EXPECT_EQ(zeltests::ReadFile(folder.Path(name)), "content of " + name);
}

TEST(FileUtilsTest, KeepAsideOfWhatIsNotThereIsAnError) {
    const ThrowAwayFolder folder;
    EXPECT_THROW(FileUtils::KeepAside(File(folder.UPath("missing")), UTF8to16(".bad")), FileError);
    zeltests::WriteFile(folder.Path("missing.bad"), "x");
    EXPECT_THROW(FileUtils::KeepAside(File(folder.UPath("missing")), UTF8to16(".bad")), FileError);
    EXPECT_EQ(zeltests::ReadFile(folder.Path("missing.bad")), "x");
}

TEST(FileUtilsTest, LeftoversOfAFolderThatIsNotThereAreNone) {
    const ThrowAwayFolder folder;
    FileUtils::RemoveLeftovers(zelcore::filesupport::Dir(folder.UPath("none")));
    FileUtils::RemoveLeftovers(zelcore::filesupport::Dir());
    EXPECT_EQ(CountEntries(folder), 0u);
}
