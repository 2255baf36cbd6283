#include <algorithm>
#include <cerrno>
#include <csignal>
#include <filesystem>
#include <string>
#include <vector>

#include <fcntl.h>
#include <gtest/gtest.h>
#include <support/ThrowAwayFolder.h>
#include <support/WaitFor.h>
#include <sys/file.h>
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

std::vector<std::string> ListEntries(const ThrowAwayFolder& folder) {
    std::vector<std::string> names;
    for (const auto& entry : std::filesystem::directory_iterator(folder.GetPath()))
        names.push_back(entry.path().filename().string());
    std::sort(names.begin(), names.end());
    return names;
}

/// The number of a process that has ended.
pid_t MakeGoneProcess() {
    const pid_t process = ::fork();
    if (process == 0) ::_exit(0);
    ::waitpid(process, nullptr, 0);
    return process;
}

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

TEST(FileUtilsTest, LeftoversOfProcessesThatAreGoneAreDeletedAndEverythingElseStays) {
    const ThrowAwayFolder folder;
    const std::string gone = ".zel-" + std::to_string(MakeGoneProcess());
    const std::string own = ".zel-" + std::to_string(::getpid()) + "-7.tmp";
    const std::vector<std::string> others = {own,           gone,           gone + "-0", gone + "-0.tmp~",
                                             ".zel--0.tmp", ".zel-x-0.tmp", "a"};
    for (const std::string& name : others) zeltests::WriteFile(folder.Path(name), "x");
    zeltests::WriteFile(folder.Path(gone + "-0.tmp"), "half");
    zeltests::WriteFile(folder.Path(gone + "-12.tmp"), "");
    FileUtils::RemoveLeftovers(folder.GetDir());
    std::vector<std::string> expected = others;
    std::sort(expected.begin(), expected.end());
    EXPECT_EQ(ListEntries(folder), expected);
}

TEST(FileUtilsTest, LeftoverThatSomebodyWhoIsNotSeenHereStillWritesStays) {
    const ThrowAwayFolder folder;
    const std::string name = ".zel-" + std::to_string(MakeGoneProcess()) + "-0.tmp";
    const int file = ::open(folder.Path(name).c_str(), O_WRONLY | O_CREAT | O_CLOEXEC, 0600);
    ASSERT_EQ(::flock(file, LOCK_EX), 0);
    FileUtils::RemoveLeftovers(folder.GetDir());
    EXPECT_EQ(CountEntries(folder), 1u);
    ::close(file);
    FileUtils::RemoveLeftovers(folder.GetDir());
    EXPECT_EQ(CountEntries(folder), 0u);
}
