#include <gtest/gtest.h>
#include <support/ThrowAwayFolder.h>
#include <windows.h>
#include <zelcore/IPlatformByteStream.h>
#include <zelcore/Utf.h>

#include "OpeningError.h"
#include "support/Handles_win32.h"

using zelcore::filesupport::File;
using zelcore::filesupport::IPlatformByteStream;
using zelcore::utility::UTF8to16;
using zeltests::CountHandles;
using zeltests::CountInheritableHandles;
using zeltests::OpeningError;
using zeltests::ThrowAwayFolder;

TEST(IPlatformByteStreamTest, PipesAndDevicesAreRefusedWithoutWaiting) {
    const std::string name = "\\\\.\\pipe\\zeltest-" + std::to_string(GetCurrentProcessId());
    const HANDLE pipe = CreateNamedPipeA(name.c_str(), PIPE_ACCESS_DUPLEX, PIPE_TYPE_BYTE, 1, 0, 0, 0, nullptr);
    ASSERT_NE(pipe, INVALID_HANDLE_VALUE);
    EXPECT_EQ(OpeningError(UTF8to16(name), IPlatformByteStream::kRead), 0);
    CloseHandle(pipe);
    EXPECT_EQ(OpeningError(UTF8to16("\\\\.\\NUL"), IPlatformByteStream::kRead), 0);
    EXPECT_EQ(OpeningError(UTF8to16("\\\\.\\NUL"), IPlatformByteStream::kWrite), 0);
}

TEST(IPlatformByteStreamTest, HandleIsNotHandedToOtherProgramsAndClosedWithTheStream) {
    const ThrowAwayFolder folder;
    const std::size_t inheritable = CountInheritableHandles();
    const std::size_t open = CountHandles();
    {
        const IPlatformByteStream stream(File(folder.UPath("file")), IPlatformByteStream::kWrite);
        EXPECT_EQ(CountInheritableHandles(), inheritable);
        EXPECT_EQ(CountHandles(), open + 1);
    }
    EXPECT_EQ(CountHandles(), open);
}

TEST(IPlatformByteStreamTest, OthersMayReplaceAndDeleteWhatIsRead) {
    const ThrowAwayFolder folder;
    zeltests::WriteFile(folder.Path("file"), "abc");
    IPlatformByteStream stream(File(folder.UPath("file")), IPlatformByteStream::kRead);
    File(folder.UPath("file")).Delete();
    char byte = 0;
    EXPECT_EQ(stream.ReadBlock(&byte, 1), 1u);
    EXPECT_EQ(byte, 'a');
}
