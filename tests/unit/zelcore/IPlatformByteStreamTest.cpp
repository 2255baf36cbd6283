#include <string>

#include <gtest/gtest.h>
#include <support/ThrowAwayFolder.h>
#include <zelcore/FileError.h>
#include <zelcore/IPlatformByteStream.h>
#include <zelcore/Utf.h>

#include "OpeningError.h"
#include "PlatformFiles.h"

using zelcore::filesupport::File;
using zelcore::filesupport::FileError;
using zelcore::filesupport::IPlatformByteStream;
using zeltests::OpeningError;
using zeltests::ThrowAwayFolder;

TEST(IPlatformByteStreamTest, ReadsInBlocksToTheEnd) {
    const ThrowAwayFolder folder;
    zeltests::WriteFile(folder.Path("file"), "0123456789");
    IPlatformByteStream stream(File(folder.UPath("file")), IPlatformByteStream::kRead);
    EXPECT_EQ(stream.Length(), 10u);
    char buffer[8] = {};
    EXPECT_EQ(stream.ReadBlock(buffer, 4), 4u);
    EXPECT_EQ(std::string(buffer, 4), "0123");
    EXPECT_EQ(stream.ReadBlock(buffer, 8), 6u);
    EXPECT_EQ(std::string(buffer, 6), "456789");
    EXPECT_EQ(stream.ReadBlock(buffer, 8), 0u);
    EXPECT_EQ(stream.ReadBlock(buffer, 0), 0u);
}

TEST(IPlatformByteStreamTest, WritingEmptiesTheFileFirst) {
    const ThrowAwayFolder folder;
    zeltests::WriteFile(folder.Path("file"), "old and long");
    {
        IPlatformByteStream stream(File(folder.UPath("file")), IPlatformByteStream::kWrite);
        EXPECT_EQ(stream.Length(), 0u);
        stream.WriteBlock("new", 3);
        stream.WriteBlock("er", 2);
        EXPECT_EQ(stream.Length(), 5u);
    }
    EXPECT_EQ(zeltests::ReadFile(folder.Path("file")), "newer");
}

TEST(IPlatformByteStreamTest, WritingMakesAMissingFile) {
    const ThrowAwayFolder folder;
    { IPlatformByteStream stream(File(folder.UPath("file")), IPlatformByteStream::kWrite); }
    EXPECT_EQ(zeltests::ReadFile(folder.Path("file")), "");
}

TEST(IPlatformByteStreamTest, MissingFilesAndFoldersAreRefused) {
    const ThrowAwayFolder folder;
    EXPECT_EQ(OpeningError(folder.UPath("missing"), IPlatformByteStream::kRead), zeltests::kNoSuchFile);
    EXPECT_EQ(OpeningError(folder.UPath("no/folder"), IPlatformByteStream::kWrite), zeltests::kNoSuchFolder);
    EXPECT_EQ(OpeningError(folder.GetDir().FullPath(), IPlatformByteStream::kRead), zeltests::kIsAFolder);
    EXPECT_EQ(OpeningError(folder.GetDir().FullPath(), IPlatformByteStream::kWrite), zeltests::kIsAFolder);
    EXPECT_EQ(OpeningError(folder.UPath("zero") + zelcore::ustring(1, 0), IPlatformByteStream::kWrite),
              zeltests::kInvalidPath);
}

TEST(IPlatformByteStreamTest, UsingTheOtherDirectionIsAnError) {
    const ThrowAwayFolder folder;
    zeltests::WriteFile(folder.Path("file"), "abc");
    char byte = 0;
    IPlatformByteStream reader(File(folder.UPath("file")), IPlatformByteStream::kRead);
    EXPECT_THROW(reader.WriteBlock("x", 1), FileError);
    IPlatformByteStream writer(File(folder.UPath("other")), IPlatformByteStream::kWrite);
    EXPECT_THROW(writer.ReadBlock(&byte, 1), FileError);
    EXPECT_EQ(zeltests::ReadFile(folder.Path("file")), "abc");
}
