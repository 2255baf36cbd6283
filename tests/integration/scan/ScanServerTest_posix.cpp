#include <csignal>

#include <gmock/gmock.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include "ProcessList.h"
#include "ScanServerStage.h"

namespace zeltests {

using zelaudiofilterhostui::ScannerProcess;

class ScanServerPosixTest : public ScanServerTest {};

TEST_F(ScanServerPosixTest, TurnsAwayAClientOfAnotherProcessAndOfAnotherUserAndServesItsOwn) {
    if (geteuid() != 0) GTEST_SKIP() << "only root can become another user";
    for (const bool otherUser : {false, true}) {
        const pid_t stranger = fork();
        if (stranger == 0) {
            if (otherUser && setuid(65534) != 0) _exit(2);
            RawClient client;
            if (!client.Connect()) _exit(3);
            _exit(client.Call("Connect", "[\"/a\",\"/b\",\"/c\",\"/a.scan\"]").empty() ? 0 : 1);
        }
        int status = -1;
        ASSERT_EQ(stranger, waitpid(stranger, &status, 0));
        EXPECT_EQ(0, status);
    }
    RawClient own;
    ASSERT_TRUE(own.Connect());
    EXPECT_THAT(own.Call("Connect", GetConnectParameters()), testing::HasSubstr("\"result\""));
}

/// A host of its own process that starts a scanner and can be killed.
TEST_F(ScanServerPosixTest, EndsWhenTheHostDies) {
    ScannerProcess::Terminate(mProcess);
    mProcess = nullptr;
    const std::size_t before = ProcessList::CountScanners();
    const pid_t host = fork();
    if (host == 0) {
        Start();
        RawClient inner;
        inner.Connect();
        inner.Call("Connect", GetConnectParameters());
        WriteFile(GetPath("ready"), "");
        pause();
        _exit(0);
    }
    ASSERT_TRUE(WaitFor([this] { return Exists(GetPath("ready")); }));
    EXPECT_EQ(before + 1, ProcessList::CountScanners());
    kill(host, SIGKILL);
    waitpid(host, nullptr, 0);
    EXPECT_TRUE(WaitFor([before] { return ProcessList::CountScanners() == before; }));
}

TEST_F(ScanServerPosixTest, ResultFileThatMayNotGrowIsAnErrorAndNotThePluginsFault) {
    RawClient client;
    ASSERT_TRUE(client.Connect());
    client.Call("Connect", GetConnectParameters());
    client.Call("BeginScanForPlugins", "[[\"2||" + TestPlugin("vst/good/zel_gain" ZEL_MODULE) + "\"]]");
    const rlimit limit = {100, 100};
    ASSERT_EQ(0, prlimit(static_cast<pid_t>(ScannerProcess::GetId(mProcess)), RLIMIT_FSIZE, &limit, nullptr));
    EXPECT_THAT(client.Call("ScanOneEntity", "[]"), testing::HasSubstr("\"error\""));
    EXPECT_TRUE(ScannerProcess::IsRunning(mProcess));
}

}  // namespace zeltests
