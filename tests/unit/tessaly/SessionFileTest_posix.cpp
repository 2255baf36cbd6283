#include <algorithm>
#include <csignal>
#include <filesystem>

#include <gtest/gtest.h>
#include <SessionFile.h>

#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include "SessionStage.h"
#include "support/DiskWaits.h"
#include "support/WaitFor.h"

using namespace tessaly;
using namespace zeltests;

namespace {

SessionRecord MakeSession(std::size_t stateSize, std::uint8_t byte) {
    SessionRecord session;
    session.effects.resize(1);
    session.effects[0].componentId = UText("VST-1");
    session.effects[0].state.assign(stateSize, byte);
    return session;
}

std::ptrdiff_t CountUnfinished(const ThrowAwayFolder& folder) {
    const std::filesystem::directory_iterator entries(folder.GetPath());
    return std::count_if(begin(entries), end(entries),
                         [](const auto& entry) { return entry.path().extension() == ".tmp"; });
}

}  // namespace

TEST(SessionFilePosixTest, AProcessThatIsKilledInTheMiddleOfASaveLeavesTheOldFileOrTheNew) {
    constexpr std::size_t kSize = 4 << 20;
    const ThrowAwayFolder folder;
    const std::string path = folder.Path("song.tessaly");
    const std::string started = folder.Path("started");
    const SessionRecord one = MakeSession(kSize, 1);
    const SessionRecord two = MakeSession(kSize, 2);
    SessionFile::Save(path, one);
    std::ptrdiff_t unfinished = 0;
    for (int round = 0; round < 12; ++round) {
        std::filesystem::remove(started);
        const pid_t child = fork();
        ASSERT_GE(child, 0);
        if (child == 0) {
            SessionFile::Save(path, one);
            WriteFile(started, "");
            for (;;) {
                SessionFile::Save(path, two);
                SessionFile::Save(path, one);
            }
        }
        ASSERT_TRUE(WaitFor([&] { return std::filesystem::exists(started); }));
        // The file beside is there as long as it writes; some are killed before it is renamed.
        ASSERT_TRUE(WaitFor([&] { return CountUnfinished(folder) > unfinished; }));
        kill(child, SIGKILL);
        waitpid(child, nullptr, 0);
        const SessionRecord found = SessionFile::Load(path);
        EXPECT_TRUE(found == one || found == two) << round;
        unfinished = CountUnfinished(folder);
    }
    EXPECT_GT(unfinished, 0) << "some were killed while they wrote";
}

TEST(SessionFilePosixTest, ADiskThatIsFullLeavesTheOldFile) {
    const ThrowAwayFolder folder;
    const std::string path = folder.Path("song.tessaly");
    const SessionRecord old = MakeSession(100, 1);
    SessionFile::Save(path, old);
    const pid_t child = fork();
    ASSERT_GE(child, 0);
    if (child == 0) {
        // To a writer a limit is what a full disk is: the write fails half-way.
        signal(SIGXFSZ, SIG_IGN);
        const rlimit limit = {1 << 16, 1 << 16};
        setrlimit(RLIMIT_FSIZE, &limit);
        const bool failed = ErrorOf([&] { SessionFile::Save(path, MakeSession(1 << 20, 2)); }) != "nothing";
        _exit(failed ? 0 : 1);
    }
    int status = 0;
    waitpid(child, &status, 0);
    EXPECT_TRUE(WIFEXITED(status) && WEXITSTATUS(status) == 0);
    EXPECT_EQ(SessionFile::Load(path), old);
    EXPECT_EQ(std::distance(std::filesystem::directory_iterator(folder.GetPath()), {}), 1) << "nothing is left beside";
}

TEST(SessionFilePosixTest, AFileInAFolderThatCannotBeWrittenStaysAsItWas) {
    if (geteuid() == 0) GTEST_SKIP() << "root may write everywhere";
    const ThrowAwayFolder folder;
    const std::string path = folder.Path("locked/song.tessaly");
    std::filesystem::create_directory(folder.Path("locked"));
    const SessionRecord old = MakeSession(100, 1);
    SessionFile::Save(path, old);
    std::filesystem::permissions(folder.Path("locked"),
                                 std::filesystem::perms::owner_read | std::filesystem::perms::owner_exec);
    EXPECT_NE(ErrorOf([&] { SessionFile::Save(path, MakeSession(100, 2)); }), "nothing");
    EXPECT_EQ(SessionFile::Load(path), old);
    std::filesystem::permissions(folder.Path("locked"), std::filesystem::perms::owner_all);
}

TEST(SessionFilePosixTest, ASessionIsOnTheDiskBeforeItTakesTheOldOnesPlace) {
    const ThrowAwayFolder folder;
    const std::string path = folder.Path("song.tessaly");
    const SessionRecord old = MakeSession(100, 1);
    SessionFile::Save(path, old);
    SessionRecord meanwhile;
    const DiskWaits waits([&](int) {
        meanwhile = SessionFile::Load(path);
        return 0;
    });
    SessionFile::Save(path, MakeSession(100, 2));
    EXPECT_EQ(waits.GetCount(), 1);
    EXPECT_EQ(meanwhile, old);
}

TEST(SessionFilePosixTest, APipeIsNoFile) {
    const ThrowAwayFolder folder;
    const std::string path = folder.Path("pipe.tessaly");
    ASSERT_EQ(mkfifo(path.c_str(), 0600), 0);
    EXPECT_EQ(ErrorOf([&] { SessionFile::Load(path); }), "There is no file " + path + ".");
    EXPECT_NE(ErrorOf([&] { SessionFile::Save(path, SessionRecord()); }), "nothing");
    EXPECT_TRUE(std::filesystem::is_fifo(path));
}

TEST(SessionFilePosixTest, ALinkStaysALink) {
    const ThrowAwayFolder folder;
    const std::string path = folder.Path("song.tessaly");
    const SessionRecord session = MakeSession(100, 1);
    std::filesystem::create_directory(folder.Path("real"));
    WriteFile(folder.Path("real/song.tessaly"), "old");
    std::filesystem::create_symlink("real/song.tessaly", path);
    SessionFile::Save(path, session);
    EXPECT_TRUE(std::filesystem::is_symlink(path));
    EXPECT_EQ(SessionFile::Load(folder.Path("real/song.tessaly")), session);
}

TEST(SessionFilePosixTest, AFileThatIsTooLargeIsNotRead) {
    const ThrowAwayFolder folder;
    const std::string path = folder.Path("song.tessaly");
    SessionFile::Save(path, MakeSession(100, 1));
    std::filesystem::resize_file(path, std::uintmax_t(600) << 20);
    EXPECT_NE(ErrorOf([&] { SessionFile::Load(path); }).find("too large"), std::string::npos);
}
