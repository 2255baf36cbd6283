#include <zeltransport/SocketTransport.h>

#include <atomic>
#include <chrono>
#include <memory>
#include <stdexcept>
#include <string>
#include <thread>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "LoopbackPair.h"
#include "RawSocket.h"
#include "SessionLog.h"
#include "support/WaitFor.h"

namespace {

using std::chrono::milliseconds;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using zeltests::Acceptor;
using zeltests::FindFreePort;
using zeltests::LoopbackPair;
using zeltests::RawSocket;
using zeltests::SessionLog;
using zeltests::WaitFor;
using zeltransport::ClientOptions;
using zeltransport::ServerOptions;
using zeltransport::Session;
using zeltransport::SocketTransport;

bool WaitForEnd(const SessionLog& log) {
    return WaitFor([&] { return log.GetClosings().size() >= 2; });
}

ServerOptions ForManyClients() {
    ServerOptions options;
    options.oneClient = false;
    return options;
}

/// What a server's handlers were told.
struct ListenLog {
    std::atomic<int> listening{0};
    std::atomic<int> failed{0};
    std::atomic<int> accepted{0};
    std::string reason;  // read only after `failed`
};

std::shared_ptr<ListenLog> Listen(SocketTransport& transport, unsigned short port, const ServerOptions& options) {
    const auto log = std::make_shared<ListenLog>();
    transport.ServerStart(
        port, options, [log](const boost::shared_ptr<Session>&) { ++log->accepted; },
        [log](const std::string& reason) {
            log->reason = reason;
            ++log->failed;
        },
        [log] { ++log->listening; });
    return log;
}

TEST(SocketTransportTest, OnlyOneThreadIsOffered) {
    EXPECT_THROW(SocketTransport::Create(0), std::invalid_argument);
    EXPECT_THROW(SocketTransport::Create(2), std::invalid_argument);
    EXPECT_NE(nullptr, SocketTransport::Create(1));
}

TEST(SocketTransportTest, AServerThatStartsLateIsFoundAndGetsWhatWaitedInOrder) {
    const unsigned short port = FindFreePort();
    const auto tries = std::make_shared<std::atomic<int>>(0);
    ClientOptions options;
    options.keepTrying = [tries] { return ++*tries > 0; };
    const auto transport = SocketTransport::Create(1);
    const auto client = transport->ClientStart("127.0.0.1", port, options);
    client->Send("one");
    client->Send("two");
    ASSERT_TRUE(WaitFor([&] { return *tries >= 3; }));
    EXPECT_TRUE(client->IsOpen());
    client->Send("three");
    Acceptor acceptor(ServerOptions(), port);
    const auto server = acceptor.WaitForSession();
    SessionLog log(*server);
    EXPECT_TRUE(WaitFor([&] { return log.GetFrames().size() == 3; }));
    EXPECT_THAT(log.GetFrames(), ElementsAre("one", "two", "three"));
}

TEST(SocketTransportTest, WithNobodyListeningTheSessionClosesAtTheDeadline) {
    const auto transport = SocketTransport::Create(1);
    ClientOptions options;
    options.connectTimeout = milliseconds(150);
    const auto start = std::chrono::steady_clock::now();
    const auto client = transport->ClientStart("127.0.0.1", FindFreePort(), options);
    SessionLog log(*client);
    client->Send("never sent");
    EXPECT_TRUE(WaitForEnd(log));
    EXPECT_GE(std::chrono::steady_clock::now() - start, milliseconds(150));
    EXPECT_THAT(log.GetClosings(), ElementsAre("protocol", "owner"));
    EXPECT_FALSE(client->IsOpen());
}

TEST(SocketTransportTest, KeepTryingIsAskedOnTheIoThreadAndItsNoEndsTheTrying) {
    const auto transport = SocketTransport::Create(1);
    const auto asked = std::make_shared<std::atomic<int>>(0);
    const auto askedHere = std::make_shared<std::atomic<bool>>(false);
    ClientOptions options;
    options.keepTrying = [=, caller = std::this_thread::get_id()] {
        if (std::this_thread::get_id() == caller) *askedHere = true;
        return ++*asked < 4;
    };
    const auto client = transport->ClientStart("127.0.0.1", FindFreePort(), options);
    SessionLog log(*client);
    EXPECT_TRUE(WaitForEnd(log));
    EXPECT_EQ(4, *asked);
    EXPECT_FALSE(*askedHere);
    EXPECT_TRUE(WaitFor([&] { return asked.use_count() == 2; })) << "the transport kept the question";
}

TEST(SocketTransportTest, AQuestionThatThrowsCountsAsNo) {
    const auto transport = SocketTransport::Create(1);
    ClientOptions options;
    options.keepTrying = []() -> bool { throw std::runtime_error("no"); };
    const auto client = transport->ClientStart("127.0.0.1", FindFreePort(), options);
    SessionLog log(*client);
    EXPECT_TRUE(WaitForEnd(log));
}

TEST(SocketTransportTest, AHostThatIsNoAddressClosesTheSession) {
    const auto transport = SocketTransport::Create(1);
    const auto client = transport->ClientStart("not an address", 1);
    SessionLog log(*client);
    EXPECT_TRUE(WaitForEnd(log));
}

TEST(SocketTransportTest, CloseWhileConnectingRunsTheHandlers) {
    const auto transport = SocketTransport::Create(1);
    const auto client = transport->ClientStart("127.0.0.1", FindFreePort());
    SessionLog log(*client);
    client->Close();
    EXPECT_TRUE(WaitForEnd(log));
}

TEST(SocketTransportTest, AServerListensOnce) {
    Acceptor acceptor;
    EXPECT_THROW(acceptor.mTransport->ServerStart(0, ServerOptions(), {}, {}, {}), std::logic_error);
}

TEST(SocketTransportTest, APortInUseFailsOnceAndSaysWhich) {
    const RawSocket other = RawSocket::Listen();
    const auto transport = SocketTransport::Create(1);
    ServerOptions options;
    options.bindTimeout = milliseconds(120);
    const auto log = Listen(*transport, other.GetPort(), options);
    EXPECT_TRUE(WaitFor([&] { return log->failed == 1; }));
    EXPECT_THAT(log->reason, HasSubstr(std::to_string(other.GetPort())));
    EXPECT_EQ(0, log->listening);
    EXPECT_EQ(0, transport->GetListeningPort());
    EXPECT_TRUE(WaitFor([&] { return log.use_count() == 1; })) << "the handlers were kept";
}

TEST(SocketTransportTest, APortThatIsFreedInTimeIsTaken) {
    RawSocket other = RawSocket::Listen();
    const unsigned short port = other.GetPort();
    const auto transport = SocketTransport::Create(1);
    const auto log = Listen(*transport, port, ServerOptions());
    // What the I/O thread does after it was told to listen: it has been refused once by then.
    const auto refused = std::make_shared<std::atomic<bool>>(false);
    const auto session = transport->ClientStart("127.0.0.1", port);
    ASSERT_TRUE(session->RunSoon([refused] { *refused = true; }));
    ASSERT_TRUE(WaitFor([&] { return refused->load(); }));
    EXPECT_EQ(0, log->listening);
    other.Close();
    EXPECT_TRUE(WaitFor([&] { return log->listening == 1; }));
    EXPECT_EQ(port, transport->GetListeningPort());
    EXPECT_EQ(0, log->failed);
}

TEST(SocketTransportTest, ConnectionsOfAnEarlierServerDoNotBlockThePort) {
    Acceptor first;
    const auto transport = SocketTransport::Create(1);
    const auto client = transport->ClientStart("127.0.0.1", first.GetPort());
    const auto server = first.WaitForSession();
    ASSERT_TRUE(WaitFor([&] { return first.mTransport->GetListeningPort() == 0; }));

    const auto next = SocketTransport::Create(1);
    ServerOptions options;
    options.bindTimeout = milliseconds(0);
    const auto log = Listen(*next, first.GetPort(), options);
    EXPECT_TRUE(WaitFor([&] { return log->listening + log->failed == 1; }));
    EXPECT_EQ(1, log->listening) << log->reason;
    EXPECT_TRUE(server->IsOpen() && client->IsOpen());
}

TEST(SocketTransportTest, AServerOfOneClientListensNoMoreOnceItHasIt) {
    Acceptor acceptor;
    const auto transport = SocketTransport::Create(1);
    const auto first = transport->ClientStart("127.0.0.1", acceptor.GetPort());
    const auto server = acceptor.WaitForSession();
    EXPECT_EQ(0, acceptor.mTransport->GetListeningPort());
    ClientOptions options;
    options.connectTimeout = milliseconds(100);
    const auto second = transport->ClientStart("127.0.0.1", acceptor.GetPort(), options);
    SessionLog log(*second);
    EXPECT_TRUE(WaitForEnd(log));
    EXPECT_EQ(1, acceptor.GetAccepted());
    EXPECT_TRUE(first->IsOpen());
}

TEST(SocketTransportTest, AServerOfManyClientsServesEach) {
    Acceptor acceptor(ForManyClients());
    const auto transport = SocketTransport::Create(1);
    for (int i = 0; i < 10; ++i) {
        const auto client = transport->ClientStart("127.0.0.1", acceptor.GetPort());
        const auto server = acceptor.WaitForSession();
        SessionLog log(*client);
        server->Send("hello");
        EXPECT_TRUE(WaitFor([&] { return log.GetFrames().size() == 1; }));
    }
    EXPECT_EQ(10, acceptor.GetAccepted());
}

TEST(SocketTransportTest, AnAcceptedSessionThatNobodyKeepsCloses) {
    const auto transport = SocketTransport::Create(1);
    const auto log = Listen(*transport, 0, ForManyClients());
    ASSERT_TRUE(WaitFor([&] { return log->listening == 1; }));
    const RawSocket raw = RawSocket::Connect(transport->GetListeningPort());
    EXPECT_EQ("", raw.ReceiveAll());
    EXPECT_EQ(1, log->accepted);
}

TEST(SocketTransportTest, LettingGoClosesTheSessionsAndRunsTheirHandlersFirst) {
    LoopbackPair pair;
    SessionLog connected(*pair.client);
    const auto connecting = pair.clientTransport->ClientStart("127.0.0.1", FindFreePort());
    SessionLog unconnected(*connecting);
    pair.clientTransport.reset();
    EXPECT_THAT(connected.GetClosings(), ElementsAre("protocol", "owner"));
    EXPECT_THAT(unconnected.GetClosings(), ElementsAre("protocol", "owner"));
}

TEST(SocketTransportTest, LettingGoClosesTheListener) {
    Acceptor acceptor;
    const unsigned short port = acceptor.GetPort();
    acceptor.mTransport.reset();
    ServerOptions options;
    options.bindTimeout = milliseconds(0);
    const auto next = SocketTransport::Create(1);
    const auto log = Listen(*next, port, options);
    EXPECT_TRUE(WaitFor([&] { return log->listening == 1 || log->failed == 1; }));
    EXPECT_EQ(1, log->listening) << log->reason;
}

TEST(SocketTransportTest, ASessionThatOutlivesItsTransportIsClosedAndInert) {
    LoopbackPair pair;
    pair.clientTransport.reset();
    EXPECT_FALSE(pair.client->IsOpen());
    SessionLog log(*pair.client);
    pair.client->Send("nothing");
    pair.client->Close();
    EXPECT_FALSE(pair.client->RunSoon([] { FAIL() << "There is no thread to run this"; }));
    pair.client->RunAfter(milliseconds(0), [] { FAIL() << "There is no thread to run this"; });
    EXPECT_TRUE(log.IsReleased());
    EXPECT_THAT(log.GetClosings(), IsEmpty());
}

TEST(SocketTransportTest, ATransportLetGoOfInAMessageHandlerEndsByItself) {
    LoopbackPair pair;
    SessionLog log;
    log.AttachClosed(*pair.server);
    const auto held = std::make_shared<boost::shared_ptr<SocketTransport>>(std::move(pair.serverTransport));
    pair.server->SetProtocolHandlers([held](const char*, std::size_t) { held->reset(); }, {});
    pair.client->Send("go");
    EXPECT_TRUE(WaitFor([&] { return log.GetClosings().size() == 1 && held.use_count() == 1; }));
    EXPECT_TRUE(WaitFor([&] { return !pair.server->RunSoon([] {}); }));
}

TEST(SocketTransportTest, ATransportLetGoOfInAClosedHandlerEndsByItself) {
    LoopbackPair pair;
    const auto held = std::make_shared<boost::shared_ptr<SocketTransport>>(std::move(pair.clientTransport));
    pair.client->SetConnectionClosedHandler([held] { held->reset(); });
    pair.client->Close();
    EXPECT_TRUE(WaitFor([&] { return !pair.client->RunSoon([] {}); }));
    EXPECT_EQ(1, held.use_count());
}

TEST(SocketTransportTest, ATransportLetGoOfInItsAcceptHandlerEndsByItself) {
    auto transport = SocketTransport::Create(1);
    const auto held = std::make_shared<boost::shared_ptr<SocketTransport>>(transport);
    const auto kept = std::make_shared<boost::shared_ptr<Session>>();
    const auto isKept = std::make_shared<std::atomic<bool>>(false);
    transport->ServerStart(0, ForManyClients(),
                           [=](const boost::shared_ptr<Session>& session) {
                               *kept = session;
                               held->reset();
                               *isKept = true;
                           },
                           {}, {});
    unsigned short port = 0;
    ASSERT_TRUE(WaitFor([&] { return (port = transport->GetListeningPort()) != 0; }));
    transport.reset();
    const RawSocket raw = RawSocket::Connect(port);
    EXPECT_EQ("", raw.ReceiveAll());
    ASSERT_TRUE(WaitFor([&] { return isKept->load(); }));
    EXPECT_TRUE(WaitFor([&] { return !(*kept)->IsOpen() && held.use_count() == 1; }));
}

TEST(SocketTransportTest, ATransportLetGoOfWhileAskedWhetherToGoOnEndsByItself) {
    const auto held = std::make_shared<boost::shared_ptr<SocketTransport>>(SocketTransport::Create(1));
    const auto released = std::make_shared<std::atomic<bool>>(false);
    ClientOptions options;
    options.keepTrying = [held, released] {
        if (*released) held->reset();
        return true;
    };
    const auto client = (*held)->ClientStart("127.0.0.1", FindFreePort(), options);
    SessionLog log(*client);
    options.keepTrying.clear();
    *released = true;
    EXPECT_TRUE(WaitForEnd(log));
    EXPECT_TRUE(WaitFor([&] { return held.use_count() == 1; }));
}

TEST(SocketTransportTest, ASessionLetGoOfInItsOwnHandlersIsHarmless) {
    LoopbackPair pair;
    SessionLog log;
    log.AttachClosed(*pair.server);
    const auto held = std::make_shared<boost::shared_ptr<Session>>(std::move(pair.server));
    (*held)->SetProtocolHandlers([held](const char*, std::size_t) { held->reset(); }, {});
    pair.client->Send("go");
    EXPECT_TRUE(WaitFor([&] { return log.GetClosings().size() == 1 && held.use_count() == 1; }));
}

}  // namespace
