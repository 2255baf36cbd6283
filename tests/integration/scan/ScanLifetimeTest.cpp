#include <chrono>
#include <csignal>
#include <cstdlib>
#include <filesystem>
#include <random>

#include <gmock/gmock.h>
#include <netinet/in.h>
#include <sys/socket.h>
#include <sys/wait.h>
#include <unistd.h>
#include <zelaudiofilterhost/ScanProtocol.h>
#include <zelaudiofilterhostui/AudioPluginScan.h>
#include <zelcore/MainLoop.h>

#include "ProcessList.h"
#include "ScanFixture.h"

namespace zeltests {

using testing::IsEmpty;
using zelaudiofilterhost::PluginLocator;
using zelaudiofilterhostui::AudioPluginScan;
using zelaudiofilterhostui::ExternalAudioPluginScan;

/// Scans that are stopped, and whose objects go, at any moment of the conversation.
class ScanLifetimeTest : public ScanFixture {
protected:
    std::vector<PluginLocator> GetPlugins() const {
        return {Vst(TestPlugin("vst/good/zel_gain.so")), Vst(TestPlugin("vst/bad/crash_when_described.so")),
                Vst3(TestPlugin("vst3/good/ZelGain3.vst3")), Vst(TestPlugin("vst/good/zel_synth.so"))};
    }

    /// Runs the main loop for so many microseconds.
    static void RunLoopFor(long microseconds) {
        auto* const loop = zelcore::threads::MainLoop::GetInstalled();
        const auto end = std::chrono::steady_clock::now() + std::chrono::microseconds(microseconds);
        const auto timer = loop->StartTimer(1, [loop, end] {
            if (std::chrono::steady_clock::now() >= end) loop->Quit();
        });
        loop->Run();
        loop->StopTimer(timer);
    }

    static int GetRounds() {
        const char* const rounds = std::getenv("ZEL_LIFETIME_ROUNDS");
        return rounds ? std::atoi(rounds) : 40;
    }
};

TEST_F(ScanLifetimeTest, StoppedAndDestroyedAtAnyMomentLeavesNothingBehind) {
    UseRealScanner();
    std::mt19937 random(1);
    for (int round = 0; round < GetRounds(); ++round) {
        {
            ExternalAudioPluginScan scan;
            ASSERT_TRUE(scan.Scan(mPreferences.GetFolder().UPath("catalogue.xml"),
                                  mPreferences.GetFolder().UPath("bans.xml"),
                                  mPreferences.GetFolder().UPath("permanent.xml"), GetPlugins(),
                                  [](const PluginLocator&, const zelcore::ustring&, int, int) {}));
            RunLoopFor(std::uniform_int_distribution<long>(0, 150000)(random));
            scan.Stop();
        }
        // What was posted for the scan runs, or is dropped, only now.
        RunLoopFor(1000);
        ASSERT_EQ(0u, ProcessList::CountScanners());
        ASSERT_FALSE(Exists(GetPath("catalogue.xml.scan")));
    }
}

TEST_F(ScanLifetimeTest, DestroyedWithoutAStopIsClean) {
    UseRealScanner();
    std::mt19937 random(3);
    for (int round = 0; round < 10; ++round) {
        {
            ExternalAudioPluginScan scan;
            ASSERT_TRUE(scan.Scan(mPreferences.GetFolder().UPath("catalogue.xml"),
                                  mPreferences.GetFolder().UPath("bans.xml"),
                                  mPreferences.GetFolder().UPath("permanent.xml"), GetPlugins(),
                                  [](const PluginLocator&, const zelcore::ustring&, int, int) {}));
            RunLoopFor(std::uniform_int_distribution<long>(0, 100000)(random));
        }
        RunLoopFor(1000);
        // The scanner ends by itself when its connection goes; nobody has taken notice of it here.
        while (waitpid(-1, nullptr, 0) > 0) {
        }
        ASSERT_EQ(0u, ProcessList::CountScanners());
    }
}

TEST_F(ScanLifetimeTest, EndIsReportedOnceHoweverTheScanEnds) {
    UseRealScanner();
    std::mt19937 random(2);
    for (int round = 0; round < GetRounds() / 4; ++round) {
        int ends = 0;
        {
            ExternalAudioPluginScan scan;
            ASSERT_TRUE(scan.Scan(mPreferences.GetFolder().UPath("catalogue.xml"),
                                  mPreferences.GetFolder().UPath("bans.xml"),
                                  mPreferences.GetFolder().UPath("permanent.xml"), GetPlugins(),
                                  [&ends](const PluginLocator&, const zelcore::ustring&, int current, int total) {
                                      ends += current > total;
                                  }));
            RunLoopFor(std::uniform_int_distribution<long>(0, 400000)(random));
            scan.Stop();
        }
        RunLoopFor(1000);
        EXPECT_EQ(1, ends);
    }
}

TEST_F(ScanLifetimeTest, StrangerOnThePortGetsNothingAndNobodyIsBanned) {
    // Another program listens on the port and takes every connection.
    const pid_t stranger = fork();
    if (stranger == 0) {
        const int server = socket(AF_INET, SOCK_STREAM, 0);
        const int yes = 1;
        setsockopt(server, SOL_SOCKET, SO_REUSEADDR, &yes, sizeof yes);
        sockaddr_in address = {};
        address.sin_family = AF_INET;
        address.sin_port = htons(zelaudiofilterhost::scanprotocol::kScannerPort);
        address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
        if (bind(server, reinterpret_cast<sockaddr*>(&address), sizeof address) != 0) _exit(1);
        listen(server, 16);
        WriteFile(GetPath("listening"), "");
        for (;;) {
            const int peer = accept(server, nullptr, nullptr);
            char byte = 0;
            if (recv(peer, &byte, 1, 0) == 1) WriteFile(GetPath("heard"), "");
            close(peer);
        }
    }
    while (!Exists(GetPath("listening"))) RunLoopFor(1000);
    UseRealScanner();
    WhenTrue([] { return FindDialog() != nullptr; },
             [this] {
                 // Long enough for the client to try several times.
                 const auto start = std::chrono::steady_clock::now();
                 WhenTrue([start] { return std::chrono::steady_clock::now() - start > std::chrono::milliseconds(500); },
                          [] { ClickCancel(); });
             });
    AudioPluginScan(nullptr).ScanForPlugins(nullptr, GetPlugins(), true);
    EXPECT_FALSE(Exists(GetPath("heard")));
    EXPECT_THAT(GetBanned(), IsEmpty());
    EXPECT_EQ(0u, ProcessList::CountScanners());
    kill(stranger, SIGKILL);
    waitpid(stranger, nullptr, 0);
}

}  // namespace zeltests
