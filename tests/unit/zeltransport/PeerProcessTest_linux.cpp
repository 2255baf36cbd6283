#include <zeltransport/PeerProcess.h>

#include <chrono>
#include <filesystem>
#include <memory>
#include <string>

#include <arpa/inet.h>
#include <fcntl.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <netinet/in.h>
#include <poll.h>
#include <spawn.h>
#include <sys/socket.h>
#include <sys/wait.h>
#include <unistd.h>
#include <zeltransport/SocketTransport.h>

#include "ChildProcess.h"
#include "LoopbackPair.h"
#include "OwnProcess.h"
#include "RawSocket.h"
#include "SessionLog.h"
#include "support/WaitFor.h"

namespace {

using std::chrono::milliseconds;
using testing::ElementsAre;
using zeltests::Acceptor;
using zeltests::ChildProcess;
using zeltests::GetOwnProcessId;
using zeltests::LoopbackPair;
using zeltests::RawSocket;
using zeltests::SessionLog;
using zeltests::WaitFor;
using zeltransport::ClientOptions;
using zeltransport::LookUpPeer;
using zeltransport::PeerOwner;
using zeltransport::ServerOptions;
using zeltransport::SocketTransport;

/// In a child: accepts one after the other and counts in `pipe` what it hears ('c' a connection, 'b' a byte).
void AcceptAndReport(int listener, int pipe) {
    for (;;) {
        const int socket = ::accept(listener, nullptr, nullptr);
        if (socket < 0 || ::write(pipe, "c", 1) != 1) return;
        char byte = 0;
        while (::recv(socket, &byte, 1, 0) == 1) {
            if (::write(pipe, "b", 1) != 1) return;
        }
        ::close(socket);
    }
}

int TryConnect(unsigned short port) {
    sockaddr_in address{};
    address.sin_family = AF_INET;
    address.sin_port = htons(port);
    address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    const int socket = ::socket(AF_INET, SOCK_STREAM, 0);
    if (::connect(socket, reinterpret_cast<sockaddr*>(&address), sizeof address) == 0) return socket;
    ::close(socket);
    return -1;
}

/// A socket connected to the port as soon as somebody listens there; -1 when nobody does in time.
int ConnectWhenListening(unsigned short port) {
    int socket = -1;
    WaitFor([&] { return (socket = TryConnect(port)) >= 0; });
    return socket;
}

/// A pipe of which the test reads what a child wrote.
class Report {
public:
    Report() { EXPECT_EQ(0, ::pipe2(mEnds, O_CLOEXEC | O_NONBLOCK)); }
    ~Report() {
        ::close(mEnds[0]);
        ::close(mEnds[1]);
    }
    int GetWriteEnd() const { return mEnds[1]; }
    const std::string& Read() {
        char chunk[256];
        ssize_t size = 0;
        while ((size = ::read(mEnds[0], chunk, sizeof chunk)) > 0) mText.append(chunk, static_cast<std::size_t>(size));
        return mText;
    }

private:
    int mEnds[2] = {-1, -1};
    std::string mText;
};

TEST(PeerProcessTest, AConnectionThatIsNotAcceptedYetBelongsToNobody) {
    const RawSocket listener = RawSocket::Listen();
    const RawSocket client = RawSocket::Connect(listener.GetPort());
    EXPECT_EQ(PeerOwner::kNotYet, LookUpPeer(listener.GetPort(), client.GetPort(), GetOwnProcessId()));
    EXPECT_EQ(PeerOwner::kNotYet, LookUpPeer(listener.GetPort(), client.GetPort(), 0));
    const RawSocket server = listener.Accept();
    EXPECT_EQ(PeerOwner::kExpected, LookUpPeer(listener.GetPort(), client.GetPort(), GetOwnProcessId()));
}

TEST(PeerProcessTest, AnotherProcessIsForeignAndExpectedUnderItsOwnId) {
    const RawSocket listener = RawSocket::Listen();
    Report report;
    const ChildProcess child([&] { AcceptAndReport(listener.Get(), report.GetWriteEnd()); });
    const RawSocket client = RawSocket::Connect(listener.GetPort());
    ASSERT_TRUE(WaitFor([&] { return report.Read() == "c"; }));
    EXPECT_EQ(PeerOwner::kForeign, LookUpPeer(listener.GetPort(), client.GetPort(), GetOwnProcessId()));
    EXPECT_EQ(PeerOwner::kExpected, LookUpPeer(listener.GetPort(), client.GetPort(), child.GetId()));
    EXPECT_EQ(PeerOwner::kExpected, LookUpPeer(listener.GetPort(), client.GetPort(), 0));
}

TEST(PeerProcessTest, AServerForBothProtocolsIsFoundInTheOtherTable) {
    const RawSocket listener(::socket(AF_INET6, SOCK_STREAM | SOCK_CLOEXEC, 0));
    if (listener.Get() < 0) GTEST_SKIP() << "no IPv6 here";
    sockaddr_in6 any{};
    any.sin6_family = AF_INET6;
    ASSERT_EQ(0, ::bind(listener.Get(), reinterpret_cast<sockaddr*>(&any), sizeof any));
    ASSERT_EQ(0, ::listen(listener.Get(), 1));
    socklen_t size = sizeof any;
    ASSERT_EQ(0, ::getsockname(listener.Get(), reinterpret_cast<sockaddr*>(&any), &size));
    const RawSocket client = RawSocket::Connect(ntohs(any.sin6_port));
    const RawSocket server = listener.Accept();
    EXPECT_EQ(PeerOwner::kExpected, LookUpPeer(ntohs(any.sin6_port), client.GetPort(), GetOwnProcessId()));
}

TEST(PeerProcessTest, AForeignServerIsNotSpokenTo) {
    RawSocket listener = RawSocket::Listen();
    const unsigned short port = listener.GetPort();
    Report report;
    const ChildProcess child([&] { AcceptAndReport(listener.Get(), report.GetWriteEnd()); });
    listener.Close();

    const auto transport = SocketTransport::Create(1);
    ClientOptions options;
    options.serverProcess = GetOwnProcessId();
    const auto client = transport->ClientStart("127.0.0.1", port, options);
    SessionLog log(*client);
    client->Send("a secret");
    EXPECT_TRUE(WaitFor([&] { return report.Read().size() >= 2; })) << "it should have been tried again";
    client->Close();
    EXPECT_TRUE(WaitFor([&] { return log.GetClosings().size() == 2; }));
    EXPECT_THAT(report.Read(), testing::MatchesRegex("cc+")) << "it should have been told nothing";
}

TEST(PeerProcessTest, TheExpectedServerIsSpokenToAlsoWhenItListensAfterAForeignOne) {
    RawSocket listener = RawSocket::Listen();
    const unsigned short port = listener.GetPort();
    Report report;
    auto child = std::make_unique<ChildProcess>([&] { AcceptAndReport(listener.Get(), report.GetWriteEnd()); });
    listener.Close();

    const auto transport = SocketTransport::Create(1);
    ClientOptions options;
    options.serverProcess = GetOwnProcessId();
    const auto client = transport->ClientStart("127.0.0.1", port, options);
    client->Send("hello");
    ASSERT_TRUE(WaitFor([&] { return !report.Read().empty(); }));
    child.reset();
    Acceptor acceptor(ServerOptions(), port);
    const auto server = acceptor.WaitForSession();
    SessionLog log(*server);
    EXPECT_TRUE(WaitFor([&] { return log.GetFrames().size() == 1; }));
    EXPECT_EQ(report.Read().find('b'), std::string::npos);
}

TEST(PeerProcessTest, AServerThatDropsTheConnectionUnacceptedIsTriedAgain) {
    RawSocket listener = RawSocket::Listen();
    const unsigned short port = listener.GetPort();
    const auto transport = SocketTransport::Create(1);
    ClientOptions options;
    options.serverProcess = GetOwnProcessId();
    const auto client = transport->ClientStart("127.0.0.1", port, options);
    // In the listener's queue, and never taken out of it.
    ASSERT_TRUE(WaitFor([&] {
        pollfd waiting = {listener.Get(), POLLIN, 0};
        return ::poll(&waiting, 1, 0) == 1;
    }));
    listener.Close();
    Acceptor acceptor(ServerOptions(), port);
    EXPECT_NE(nullptr, acceptor.WaitForSession());
}

TEST(PeerProcessTest, AForeignClientIsTurnedAwayUnheardAndTheExpectedOneServed) {
    ServerOptions options;
    options.clientProcess = GetOwnProcessId();
    const unsigned short port = zeltests::FindFreePort();
    Report report;
    const ChildProcess child([&] {
        const int socket = ConnectWhenListening(port);
        if (socket < 0) return;
        const char frame[] = "\x03\0\0\0bad";
        ::send(socket, frame, 7, MSG_NOSIGNAL);
        char byte = 0;
        const bool closed = ::recv(socket, &byte, 1, 0) <= 0;
        if (::write(report.GetWriteEnd(), closed ? "closed" : "served", 6) != 6) return;
        ::pause();
    });
    Acceptor acceptor(options, port);
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

TEST(PeerProcessTest, AClientOfAnotherUserIsTurnedAway) {
    if (::geteuid() != 0) GTEST_SKIP() << "only root can become another user";
    const unsigned short port = zeltests::FindFreePort();
    Report report;
    const ChildProcess child([&] {
        constexpr uid_t kNobody = 65534;
        if (::setuid(kNobody) != 0) return;
        const int socket = ConnectWhenListening(port);
        if (socket < 0) return;
        char byte = 0;
        const bool closed = ::recv(socket, &byte, 1, 0) <= 0;
        if (::write(report.GetWriteEnd(), closed ? "closed" : "served", 6) != 6) return;
        ::pause();
    });
    Acceptor acceptor(ServerOptions(), port);
    ASSERT_TRUE(WaitFor([&] { return report.Read().size() == 6; }));
    EXPECT_EQ("closed", report.Read());
    EXPECT_EQ(0, acceptor.GetAccepted());
}

std::size_t CountSockets(pid_t process) {
    std::size_t sockets = 0;
    std::error_code error;
    const std::filesystem::path folder = "/proc/" + std::to_string(process) + "/fd";
    for (const auto& item : std::filesystem::directory_iterator(folder)) {
        const std::string target = std::filesystem::read_symlink(item.path(), error).string();
        if (!error && target.rfind("socket:", 0) == 0) ++sockets;
    }
    return sockets;
}

TEST(PeerProcessTest, ChildProcessesInheritNoSocket) {
    const std::size_t atFirst = CountSockets(::getpid());
    Acceptor acceptor([] {
        ServerOptions options;
        options.oneClient = false;
        return options;
    }());
    const auto transport = SocketTransport::Create(1);
    const auto client = transport->ClientStart("127.0.0.1", acceptor.GetPort());
    const auto server = acceptor.WaitForSession();
    const auto connecting = transport->ClientStart("127.0.0.1", zeltests::FindFreePort());
    ASSERT_GE(CountSockets(::getpid()), atFirst + 3);

    int input[2];
    ASSERT_EQ(0, ::pipe2(input, O_CLOEXEC));
    posix_spawn_file_actions_t actions;
    ::posix_spawn_file_actions_init(&actions);
    ::posix_spawn_file_actions_adddup2(&actions, input[0], 0);
    char name[] = "cat";
    char* arguments[] = {name, nullptr};
    pid_t process = 0;
    ASSERT_EQ(0, ::posix_spawnp(&process, name, &actions, nullptr, arguments, environ));
    ::posix_spawn_file_actions_destroy(&actions);
    // posix_spawn returns once the other program runs.
    EXPECT_EQ(atFirst, CountSockets(process)) << "what the test itself was started with may be there, no more";
    ::close(input[0]);
    ::close(input[1]);
    int status = 0;
    ::waitpid(process, &status, 0);
}

}  // namespace
