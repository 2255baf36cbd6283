#include <cerrno>

#include <fcntl.h>
#include <gtest/gtest.h>
#include <support/ThrowAwayFolder.h>
#include <sys/stat.h>
#include <unistd.h>
#include <zelcore/IPlatformByteStream.h>
#include <zelcore/Utf.h>

#include "OpeningError.h"

using zelcore::filesupport::File;
using zelcore::filesupport::IPlatformByteStream;
using zelcore::utility::UTF8to16;
using zeltests::OpeningError;
using zeltests::ThrowAwayFolder;

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
