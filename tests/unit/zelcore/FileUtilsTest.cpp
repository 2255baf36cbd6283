#include <atomic>
#include <cerrno>
#include <csignal>
#include <filesystem>
#include <string>
#include <thread>
#include <vector>

#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <gtest/gtest.h>
#include <support/ThrowAwayFolder.h>
#include <support/WaitFor.h>
#include <zelcore/FileError.h>
#include <zelcore/FileUtils.h>
#include <zelcore/Utf.h>

using zelcore::filesupport::File;
using zelcore::filesupport::FileError;
using zelcore::utility::FileUtils;
using zelcore::utility::UTF8to16;
using zeltests::ThrowAwayFolder;

namespace {

std::size_t CountEntries(const ThrowAwayFolder& folder) {
    const std::filesystem::directory_iterator entries(folder.GetPath());
    return static_cast<std::size_t>(std::distance(begin(entries), end(entries)));
}

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

TEST(FileUtilsTest, FolderDeviceAndMissingFolderAreErrors) {
    const ThrowAwayFolder folder;
    ASSERT_EQ(::mkdir(folder.Path("sub").c_str(), 0700), 0);
    ASSERT_EQ(::mkfifo(folder.Path("pipe").c_str(), 0600), 0);
    EXPECT_THROW(FileUtils::SimpleWriteStringToFile(folder.UPath("sub"), "x"), FileError);
    EXPECT_THROW(FileUtils::SimpleWriteStringToFile(folder.UPath("pipe"), "x"), FileError);
    EXPECT_THROW(FileUtils::SimpleWriteStringToFile(folder.UPath("missing/file"), "x"), FileError);
    EXPECT_THROW(FileUtils::SimpleWriteStringToFile(zelcore::ustring(), "x"), FileError);
    EXPECT_EQ(CountEntries(folder), 2u);
}

TEST(FileUtilsTest, NameMayBeAsLongAsNamesCanBe) {
    const ThrowAwayFolder folder;
    const std::string name(255, 'n');
    FileUtils::SimpleWriteStringToFile(folder.UPath(name), "x");
    EXPECT_EQ(zeltests::ReadFile(folder.Path(name)), "x");
}

TEST(FileUtilsTest, LinkStaysALinkAndItsTargetIsReplaced) {
    const ThrowAwayFolder folder;
    ASSERT_EQ(::mkdir(folder.Path("sub").c_str(), 0700), 0);
    zeltests::WriteFile(folder.Path("sub/target"), "old");
    ASSERT_EQ(::symlink("sub/target", folder.Path("link").c_str()), 0);
    FileUtils::SimpleWriteStringToFile(folder.UPath("link"), "new");
    EXPECT_TRUE(std::filesystem::is_symlink(folder.Path("link")));
    EXPECT_EQ(zeltests::ReadFile(folder.Path("sub/target")), "new");
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
        EXPECT_EQ(error.GetSystemError(), EFBIG);
    }
    EXPECT_THROW(FileUtils::ReadFileToString(File(folder.UPath("missing")), 10), FileError);
    EXPECT_THROW(FileUtils::ReadFileToString(File(folder.GetDir().FullPath()), 10), FileError);
}

TEST(FileUtilsTest, FilesThatAnnounceNoLengthAreReadAndBoundedAllTheSame) {
    const File status(UTF8to16("/proc/self/status"));
    const std::string text = FileUtils::ReadFileToString(status, 1 << 20);
    EXPECT_NE(text.find("Name:"), std::string::npos);
    EXPECT_THROW(FileUtils::ReadFileToString(status, 10), FileError);
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
