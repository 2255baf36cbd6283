#include <cerrno>
#include <csignal>
#include <string>

#include <gtest/gtest.h>
#include <support/ThrowAwayFolder.h>
#include <support/WaitFor.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>
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

/// Makes writes beyond `bytes` fail, as a full disk would.
class FileSizeLimit {
public:
    explicit FileSizeLimit(rlim_t bytes) : mHandler(std::signal(SIGXFSZ, SIG_IGN)) {
        ::getrlimit(RLIMIT_FSIZE, &mBefore);
        const rlimit limit{bytes, mBefore.rlim_max};
        ::setrlimit(RLIMIT_FSIZE, &limit);
    }
    ~FileSizeLimit() {
        ::setrlimit(RLIMIT_FSIZE, &mBefore);
        std::signal(SIGXFSZ, mHandler);
    }

private:
    rlimit mBefore{};
    void (*mHandler)(int);
};

const std::string kShort(50000, 'A');
const std::string kLong(150000, 'B');

}  // namespace

TEST(FileUtilsTest, FailedWriteLeavesTheOldFileAndNothingBeside) {
    const ThrowAwayFolder folder;
    zeltests::WriteFile(folder.Path("file"), "old");
    {
        const FileSizeLimit limit(1000);
        try {
            FileUtils::SimpleWriteStringToFile(folder.UPath("file"), kShort);
            ADD_FAILURE() << "was written";
        } catch (const FileError& error) {
            EXPECT_EQ(error.GetSystemError(), EFBIG);
            EXPECT_EQ(error.GetPath(), folder.UPath("file"));
        }
    }
    EXPECT_EQ(zeltests::ReadFile(folder.Path("file")), "old");
    EXPECT_EQ(CountEntries(folder), 1u);
}

TEST(FileUtilsTest, PipesAreNotWritten) {
    const ThrowAwayFolder folder;
    ASSERT_EQ(::mkfifo(folder.Path("pipe").c_str(), 0600), 0);
    EXPECT_THROW(FileUtils::SimpleWriteStringToFile(folder.UPath("pipe"), "x"), FileError);
    EXPECT_EQ(CountEntries(folder), 1u);
}

TEST(FileUtilsTest, PermissionsOfTheOldFileStay) {
    const ThrowAwayFolder folder;
    zeltests::WriteFile(folder.Path("file"), "old");
    ASSERT_EQ(::chmod(folder.Path("file").c_str(), 0640), 0);
    FileUtils::SimpleWriteStringToFile(folder.UPath("file"), "new");
    struct stat status;
    ASSERT_EQ(::stat(folder.Path("file").c_str(), &status), 0);
    EXPECT_EQ(status.st_mode & 0777, 0640u);
}

TEST(FileUtilsTest, KilledWriterLeavesAWholeFile) {
    const ThrowAwayFolder folder;
    const zelcore::ustring path = folder.UPath("file");
    for (int round = 0; round < 5; ++round) {
        FileUtils::SimpleWriteStringToFile(path, kShort);
        const pid_t child = ::fork();
        ASSERT_GE(child, 0);
        if (child == 0) {
            for (bool even = true;; even = !even) FileUtils::SimpleWriteStringToFile(path, even ? kLong : kShort);
        }
        const bool wrote = zeltests::WaitFor([&] { return FileUtils::ReadFileToString(File(path), 1 << 20) == kLong; });
        ::kill(child, SIGKILL);
        int status = 0;
        ::waitpid(child, &status, 0);
        ASSERT_TRUE(wrote);
        const std::string left = FileUtils::ReadFileToString(File(path), 1 << 20);
        EXPECT_TRUE(left == kShort || left == kLong) << left.size();
    }
}

TEST(FileUtilsTest, FilesThatAnnounceNoLengthAreReadAndBoundedAllTheSame) {
    const File status(UTF8to16("/proc/self/status"));
    const std::string text = FileUtils::ReadFileToString(status, 1 << 20);
    EXPECT_NE(text.find("Name:"), std::string::npos);
    EXPECT_THROW(FileUtils::ReadFileToString(status, 10), FileError);
}
