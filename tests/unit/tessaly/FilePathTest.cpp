#include <AudioFileReader.h>
#include <FilePath.h>
#include <gtest/gtest.h>
#include <SystemFile.h>

#include "SessionStage.h"

using namespace tessaly;
using namespace zeltests;

namespace {

// Of letters that no single narrow encoding has.
constexpr char kName[] = "gr\xC3\xB6\xC3\x9F\x65 \xE6\xBC\xA2\xE5\xAD\x97 \xF0\x9F\x8E\xB5.wav";

}  // namespace

TEST(FilePathTest, TextGoesThereAndBack) {
    EXPECT_EQ(FromFilePath(ToFilePath(kName)), kName);
    EXPECT_EQ(ToFilePath(kName).u16string(), u"gr\u00F6\u00DFe \u6F22\u5B57 \U0001F3B5.wav");
}

TEST(FilePathTest, FilesOfSuchNamesAreFoundAndRead) {
    const ThrowAwayFolder folder;
    WriteSound(folder.Path(kName), 2);
    EXPECT_TRUE(std::filesystem::exists(ToFilePath(folder.Path(kName))));
    EXPECT_EQ(AudioFileReader(folder.Path(kName)).GetChannelCount(), 2);
}

TEST(SystemFileTest, AFileIsMadeOnlyWhereNoneWas) {
    const ThrowAwayFolder folder;
    const std::filesystem::path path = ToFilePath(folder.Path(kName));
    EXPECT_FALSE(SystemFile::CreateNew(path));
    EXPECT_EQ(std::filesystem::file_size(path), 0u);
    EXPECT_EQ(SystemFile::CreateNew(path), std::errc::file_exists);
    EXPECT_EQ(SystemFile::CreateNew(ToFilePath(folder.Path("missing/a.wav"))), std::errc::no_such_file_or_directory);
}

TEST(SystemFileTest, AskingWhetherAFileMayBeWrittenLeavesItAsItWas) {
    const ThrowAwayFolder folder;
    WriteFile(folder.Path(kName), "sound");
    EXPECT_FALSE(SystemFile::CheckWritable(ToFilePath(folder.Path(kName))));
    EXPECT_EQ(ReadFile(folder.Path(kName)), "sound");
    EXPECT_TRUE(SystemFile::CheckWritable(ToFilePath(folder.GetPath()))) << "a folder";
}
