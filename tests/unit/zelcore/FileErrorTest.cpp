#include <cerrno>

#include <gtest/gtest.h>
#include <zelcore/FileError.h>
#include <zelcore/Utf.h>

using zelcore::filesupport::FileError;
using zelcore::utility::UTF8to16;

TEST(FileErrorTest, SaysOperationFileAndReasonInOneLine) {
    const FileError error("open", UTF8to16("/x/\xC3\xA4"), ENOENT);
    EXPECT_STREQ(error.what(), "could not open '/x/\xC3\xA4': No such file or directory");
    EXPECT_EQ(error.GetPath(), UTF8to16("/x/\xC3\xA4"));
    EXPECT_EQ(error.GetSystemError(), ENOENT);
}

TEST(FileErrorTest, ReasonThatIsNotTheSystemsIsLeftOut) {
    EXPECT_STREQ(FileError("open as a regular file", UTF8to16("/dev/null"), 0).what(),
                 "could not open as a regular file '/dev/null'");
}

TEST(FileErrorTest, LineBreaksInNamesDoNotBreakTheLine) {
    const FileError error("open", UTF8to16("/x\ny\x1B\x7F"), 0);
    EXPECT_STREQ(error.what(),
                 "could not open '/x?y?"
                 "?'");
    EXPECT_EQ(error.GetPath(), UTF8to16("/x\ny\x1B\x7F"));
}
