#include <cerrno>
#include <string>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <gtest/gtest.h>
#include <support/ThrowAwayFolder.h>
#include <zelcore/FileError.h>
#include <zelcore/IPlatformByteStream.h>
#include <zelcore/Utf.h>

using zelcore::filesupport::File;
using zelcore::filesupport::FileError;
using zelcore::filesupport::IPlatformByteStream;
using zelcore::utility::UTF8to16;
using zeltests::ThrowAwayFolder;

namespace {

int OpeningError(const zelcore::ustring& path, IPlatformByteStream::Mode mode) {
    try {
        IPlatformByteStream stream((File(path)), mode);
    } catch (const FileError& error) {
        EXPECT_EQ(error.GetPath(), path);
        return error.GetSystemError();
    }
    ADD_FAILURE() << "was opened";
    return -1;
}

}  // namespace

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
    EXPECT_EQ(OpeningError(folder.UPath("missing"), IPlatformByteStream::kRead), ENOENT);
    EXPECT_EQ(OpeningError(folder.UPath("no/folder"), IPlatformByteStream::kWrite), ENOENT);
    EXPECT_EQ(OpeningError(folder.GetDir().FullPath(), IPlatformByteStream::kRead), EISDIR);
    EXPECT_EQ(OpeningError(folder.GetDir().FullPath(), IPlatformByteStream::kWrite), EISDIR);
    EXPECT_EQ(OpeningError(folder.UPath("zero") + zelcore::ustring(1, 0), IPlatformByteStream::kWrite), EINVAL);
}

TEST(IPlatformByteStreamTest, PipesAndDevicesAreRefusedWithoutWaiting) {
    const ThrowAwayFolder folder;
    ASSERT_EQ(::mkfifo(folder.Path("pipe").c_str(), 0600), 0);
    EXPECT_EQ(OpeningError(folder.UPath("pipe"), IPlatformByteStream::kRead), 0);
    EXPECT_EQ(OpeningError(folder.UPath("pipe"), IPlatformByteStream::kWrite), ENXIO);
    const int reader = ::open(folder.Path("pipe").c_str(), O_RDONLY | O_NONBLOCK | O_CLOEXEC);
    ASSERT_GE(reader, 0);
    EXPECT_EQ(OpeningError(folder.UPath("pipe"), IPlatformByteStream::kWrite), 0);
    ::close(reader);
    EXPECT_EQ(OpeningError(UTF8to16("/dev/zero"), IPlatformByteStream::kRead), 0);
    EXPECT_EQ(OpeningError(UTF8to16("/dev/null"), IPlatformByteStream::kWrite), 0);
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

TEST(IPlatformByteStreamTest, DescriptorIsNotHandedToOtherPrograms) {
    const ThrowAwayFolder folder;
    // The lowest free number is the one that the stream will get.
    const int next = ::dup(0);
    ASSERT_GE(next, 0);
    ::close(next);
    {
        IPlatformByteStream stream(File(folder.UPath("file")), IPlatformByteStream::kWrite);
        const int flags = ::fcntl(next, F_GETFD);
        ASSERT_GE(flags, 0);
        EXPECT_NE(flags & FD_CLOEXEC, 0);
    }
    EXPECT_EQ(::fcntl(next, F_GETFD), -1) << "closed with the stream";
}
