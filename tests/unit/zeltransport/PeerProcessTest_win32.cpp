#include <zeltransport/PeerProcess.h>

#include <chrono>
#include <fstream>
#include <memory>
#include <string>

#include <winsock2.h>
#include <ws2tcpip.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <zeltransport/SocketTransport.h>

#include "LoopbackPair.h"
#include "OwnProcess.h"
#include "RawSocket.h"
#include "SessionLog.h"
#include "support/ChildRole_win32.h"
#include "support/Handles_win32.h"
#include "support/ThrowAwayFolder.h"
#include "support/WaitFor.h"

namespace {

using std::chrono::milliseconds;
using testing::ElementsAre;
using zeltests::Acceptor;
using zeltests::ChildRole;
using zeltests::GetOwnProcessId;
using zeltests::RawSocket;
using zeltests::SessionLog;
using zeltests::WaitFor;
using zeltransport::ClientOptions;
using zeltransport::LookUpPeer;
using zeltransport::PeerOwner;
using zeltransport::ServerOptions;
using zeltransport::SocketTransport;

const char* const kNoOwners = "wine does not tell whose a connection is";

/// What a child writes into a file and the test reads.
class Report {
public:
    /// What a child is told: the port, and where to write to.
    std::string MakeArgument(unsigned short port) const { return std::to_string(port) + "|" + GetPath(); }
    std::string Read() const {
        std::ifstream stream(zeltests::ToPath(GetPath()), std::ios::binary);
        return std::string(std::istreambuf_iterator<char>(stream), std::istreambuf_iterator<char>());
    }
    static void Write(const std::string& argument, const std::string& text) {
        std::ofstream stream(zeltests::ToPath(argument.substr(argument.find('|') + 1)),
                             std::ios::binary | std::ios::app);
        stream << text;
    }
    static unsigned short GetPort(const std::string& argument) {
        return static_cast<unsigned short>(std::stoi(argument));
    }

private:
    std::string GetPath() const { return mFolder.Path("report"); }
    zeltests::ThrowAwayFolder mFolder;
};

/// Accepts one after the other and reports what it hears ('l' that it listens, 'c' a connection, 'b' a byte).
const ChildRole kServer("accept-and-report", [](const std::string& argument) {
    const RawSocket listener = RawSocket::Listen(Report::GetPort(argument));
    Report::Write(argument, "l");
    for (;;) {
        const RawSocket socket = listener.Accept();
        Report::Write(argument, "c");
        char byte = 0;
        while (recv(static_cast<SOCKET>(socket.Get()), &byte, 1, 0) == 1) Report::Write(argument, "b");
    }
});

/// Sends a frame to whoever listens, and reports whether it is served.
const ChildRole kClient("send-and-report", [](const std::string& argument) {
    const RawSocket socket = RawSocket::Connect(Report::GetPort(argument));
    send(static_cast<SOCKET>(socket.Get()), "\x03\0\0\0bad", 7, 0);
    char byte = 0;
    const bool closed = recv(static_cast<SOCKET>(socket.Get()), &byte, 1, 0) <= 0;
    Report::Write(argument, closed ? "closed" : "served");
});

TEST(PeerProcessTest, AnotherProcessIsForeignAndExpectedUnderItsOwnId) {
    if (zeltests::IsWine()) GTEST_SKIP() << kNoOwners;
    const unsigned short port = zeltests::FindFreePort();
    const Report report;
    const ChildRole::Process child = kServer.Start(report.MakeArgument(port));
    ASSERT_TRUE(WaitFor([&] { return report.Read() == "l"; }));
    const RawSocket client = RawSocket::Connect(port);
    ASSERT_TRUE(WaitFor([&] { return report.Read() == "lc"; }));
    EXPECT_EQ(PeerOwner::kForeign, LookUpPeer(port, client.GetPort(), GetOwnProcessId()));
    EXPECT_EQ(PeerOwner::kExpected, LookUpPeer(port, client.GetPort(), child.GetId()));
    EXPECT_EQ(PeerOwner::kExpected, LookUpPeer(port, client.GetPort(), 0));
}

TEST(PeerProcessTest, AForeignServerIsNotSpokenTo) {
    if (zeltests::IsWine()) GTEST_SKIP() << kNoOwners;
    const unsigned short port = zeltests::FindFreePort();
    const Report report;
    const ChildRole::Process child = kServer.Start(report.MakeArgument(port));
    ASSERT_TRUE(WaitFor([&] { return report.Read() == "l"; }));

    const auto transport = SocketTransport::Create(1);
    ClientOptions options;
    options.connectTimeout = milliseconds(400);
    options.serverProcess = GetOwnProcessId();
    const auto client = transport->ClientStart("127.0.0.1", port, options);
    SessionLog log(*client);
    client->Send("a secret");
    EXPECT_TRUE(WaitFor([&] { return log.GetClosings().size() == 2; }));
    EXPECT_THAT(report.Read(), testing::MatchesRegex("lcc+")) << "it should have been tried again, and told nothing";
}

TEST(PeerProcessTest, TheExpectedServerIsSpokenToAlsoWhenItListensAfterAForeignOne) {
    if (zeltests::IsWine()) GTEST_SKIP() << kNoOwners;
    const unsigned short port = zeltests::FindFreePort();
    const Report report;
    std::unique_ptr<ChildRole::Process> child(new ChildRole::Process(kServer.Start(report.MakeArgument(port))));
    ASSERT_TRUE(WaitFor([&] { return report.Read() == "l"; }));

    const auto transport = SocketTransport::Create(1);
    ClientOptions options;
    options.serverProcess = GetOwnProcessId();
    const auto client = transport->ClientStart("127.0.0.1", port, options);
    client->Send("hello");
    ASSERT_TRUE(WaitFor([&] { return report.Read().size() > 1; }));
    child.reset();
    Acceptor acceptor(ServerOptions(), port);
    const auto server = acceptor.WaitForSession();
    SessionLog log(*server);
    EXPECT_TRUE(WaitFor([&] { return log.GetFrames().size() == 1; }));
    EXPECT_EQ(report.Read().find('b'), std::string::npos);
}

TEST(PeerProcessTest, AForeignClientIsTurnedAwayUnheardAndTheExpectedOneServed) {
    if (zeltests::IsWine()) GTEST_SKIP() << kNoOwners;
    ServerOptions options;
    options.clientProcess = GetOwnProcessId();
    const unsigned short port = zeltests::FindFreePort();
    Acceptor acceptor(options, port);
    const Report report;
    const ChildRole::Process child = kClient.Start(report.MakeArgument(port));
    ASSERT_TRUE(WaitFor([&] { return report.Read().size() == 6; }));
    EXPECT_EQ("closed", report.Read());
    EXPECT_EQ(0, acceptor.GetAccepted());
    EXPECT_EQ(port, acceptor.mTransport->GetListeningPort());

    const auto transport = SocketTransport::Create(1);
    const auto client = transport->ClientStart("127.0.0.1", port);
    client->Send("good");
    const auto server = acceptor.WaitForSession();
    SessionLog log(*server);
    EXPECT_TRUE(WaitFor([&] { return log.GetFrames().size() == 1; }));
    EXPECT_THAT(log.GetFrames(), ElementsAre("good"));
}

TEST(PeerProcessTest, AServerForBothProtocolsIsFoundInTheOtherTable) {
    const RawSocket first = RawSocket::Listen();
    const RawSocket listener(static_cast<int>(
        WSASocketW(AF_INET6, SOCK_STREAM, 0, nullptr, 0, WSA_FLAG_OVERLAPPED | WSA_FLAG_NO_HANDLE_INHERIT)));
    if (listener.Get() < 0) GTEST_SKIP() << "no IPv6 here";
    const SOCKET both = static_cast<SOCKET>(listener.Get());
    const DWORD alone = 0;
    ASSERT_EQ(0, setsockopt(both, IPPROTO_IPV6, IPV6_V6ONLY, reinterpret_cast<const char*>(&alone), sizeof alone));
    sockaddr_in6 any{};
    any.sin6_family = AF_INET6;
    ASSERT_EQ(0, bind(both, reinterpret_cast<sockaddr*>(&any), sizeof any));
    ASSERT_EQ(0, listen(both, 1));
    int size = sizeof any;
    ASSERT_EQ(0, getsockname(both, reinterpret_cast<sockaddr*>(&any), &size));
    const RawSocket client = RawSocket::Connect(ntohs(any.sin6_port));
    const RawSocket server = listener.Accept();
    EXPECT_EQ(PeerOwner::kExpected, LookUpPeer(ntohs(any.sin6_port), client.GetPort(), GetOwnProcessId()));
}

TEST(PeerProcessTest, ChildProcessesInheritNoSocket) {
    const std::size_t atFirst = zeltests::CountInheritableHandles();
    const std::size_t all = zeltests::CountHandles();
    ServerOptions options;
    options.oneClient = false;
    Acceptor acceptor(options);
    const auto transport = SocketTransport::Create(1);
    const auto client = transport->ClientStart("127.0.0.1", acceptor.GetPort());
    const auto server = acceptor.WaitForSession();
    const auto connecting = transport->ClientStart("127.0.0.1", zeltests::FindFreePort());
    ASSERT_GE(zeltests::CountHandles(), all + 3);
    EXPECT_EQ(atFirst, zeltests::CountInheritableHandles());
}

}  // namespace
