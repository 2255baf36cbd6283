#include <chrono>
#include <csignal>

#include <gmock/gmock.h>
#include <netinet/in.h>
#include <sys/socket.h>
#include <sys/wait.h>
#include <unistd.h>
#include <zelaudiofilterhost/ScanProtocol.h>
#include <zelaudiofilterhostui/AudioPluginScan.h>

#include "ProcessList.h"
#include "ScanLifetimeStage.h"

namespace zeltests {

using testing::IsEmpty;
using zelaudiofilterhostui::AudioPluginScan;

class ScanStrangerTest : public ScanLifetimeTest {};

TEST_F(ScanStrangerTest, StrangerOnThePortGetsNothingAndNobodyIsBanned) {
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
