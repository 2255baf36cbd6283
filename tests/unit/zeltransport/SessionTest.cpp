#include <zeltransport/Session.h>

#include <atomic>
#include <stdexcept>
#include <string>
#include <thread>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <zeltransport/SocketTransport.h>

#include "LoopbackPair.h"
#include "RawSocket.h"
#include "SessionLog.h"
#include "support/WaitFor.h"

namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;
using zeltests::Acceptor;
using zeltests::LoopbackPair;
using zeltests::MakeFrame;
using zeltests::MakeFrameHeader;
using zeltests::RawSocket;
using zeltests::SessionLog;
using zeltests::WaitFor;
using zeltransport::kMaxFrameSize;

const auto kBothClosings = ElementsAre("protocol", "owner");

/// A session whose far end is a raw socket.
struct RawPair {
    RawPair() {
        raw = RawSocket::Connect(acceptor.GetPort());
        session = acceptor.WaitForSession();
    }
    Acceptor acceptor;
    RawSocket raw;
    boost::shared_ptr<zeltransport::Session> session;
};

bool WaitForEnd(const SessionLog& log) {
    return WaitFor([&] { return log.GetClosings().size() >= 2; });
}

/// Whatever the I/O thread had queued by now has run when this returns.
void Settle(zeltransport::Session& session) {
    const auto ran = std::make_shared<std::atomic<bool>>(false);
    ASSERT_TRUE(session.RunSoon([ran] { *ran = true; }));
    ASSERT_TRUE(WaitFor([&] { return ran->load(); }));
}

TEST(SessionTest, FramesTravelBothWaysInOrder) {
    LoopbackPair pair;
    SessionLog client(*pair.client), server(*pair.server);
    std::vector<std::string> sent;
    for (int i = 0; i < 100; ++i) {
        sent.push_back("frame " + std::to_string(i));
        pair.client->Send(sent.back());
        pair.server->Send(sent.back());
    }
    EXPECT_TRUE(WaitFor([&] { return client.GetFrames().size() == 100 && server.GetFrames().size() == 100; }));
    EXPECT_EQ(sent, client.GetFrames());
    EXPECT_EQ(sent, server.GetFrames());
}

TEST(SessionTest, TheWireFormatIsALittleEndianLengthAndTheBytes) {
    RawPair pair;
    pair.session->Send(std::string(258, 'x'));
    EXPECT_EQ(std::string("\x02\x01\x00\x00", 4) + std::string(258, 'x'), pair.raw.Receive(262));
}

TEST(SessionTest, AnEmptyFrameArrives) {
    LoopbackPair pair;
    SessionLog server(*pair.server);
    pair.client->Send("");
    EXPECT_TRUE(WaitFor([&] { return server.GetFrames().size() == 1; }));
    EXPECT_EQ("", server.GetFrames().at(0));
}

TEST(SessionTest, AFrameOfTheLargestSizeArrives) {
    LoopbackPair pair;
    SessionLog server(*pair.server);
    std::string large(kMaxFrameSize, 'a');
    large.back() = 'z';
    pair.client->Send(large);
    pair.client->Send("next");
    ASSERT_TRUE(WaitFor([&] { return server.GetFrames().size() == 2; }));
    EXPECT_TRUE(server.GetFrames()[0] == large);
    EXPECT_EQ("next", server.GetFrames()[1]);
}

TEST(SessionTest, ATooLongFrameClosesInsteadOfBeingSent) {
    LoopbackPair pair;
    SessionLog client(*pair.client), server(*pair.server);
    pair.client->Send(std::string(kMaxFrameSize + 1, 'a'));
    EXPECT_FALSE(pair.client->IsOpen());
    EXPECT_TRUE(WaitForEnd(client) && WaitForEnd(server));
    EXPECT_THAT(server.GetFrames(), IsEmpty());
}

TEST(SessionTest, ATooLongAnnouncementClosesTheSession) {
    for (const std::uint32_t size : {static_cast<std::uint32_t>(kMaxFrameSize) + 1, 0x80000000u, 0xFFFFFFFFu}) {
        RawPair pair;
        SessionLog log(*pair.session);
        pair.raw.Send(MakeFrameHeader(size));
        EXPECT_TRUE(WaitForEnd(log));
        EXPECT_THAT(log.GetClosings(), kBothClosings);
        EXPECT_EQ("", pair.raw.ReceiveAll());
    }
}

TEST(SessionTest, ATooLongAnnouncementClosesAlsoWhileNobodyListensToTheSession) {
    RawPair pair;
    pair.raw.Send(MakeFrameHeader(0xFFFFFFFFu));
    EXPECT_EQ("", pair.raw.ReceiveAll());
    EXPECT_FALSE(pair.session->IsOpen());
}

TEST(SessionTest, AFrameInSingleBytesIsPutTogether) {
    RawPair pair;
    SessionLog log(*pair.session);
    const std::string bytes = MakeFrame("one") + MakeFrame("") + MakeFrame("two");
    for (const char byte : bytes) {
        pair.raw.Send(std::string(1, byte));
        Settle(*pair.session);
    }
    EXPECT_TRUE(WaitFor([&] { return log.GetFrames().size() == 3; }));
    EXPECT_THAT(log.GetFrames(), ElementsAre("one", "", "two"));
}

TEST(SessionTest, SeveralFramesInOnePacketComeApart) {
    RawPair pair;
    SessionLog log(*pair.session);
    pair.raw.Send(MakeFrame("one") + MakeFrame("two") + MakeFrame("three") + MakeFrameHeader(7) + "unfin");
    EXPECT_TRUE(WaitFor([&] { return log.GetFrames().size() == 3; }));
    pair.raw.Send("ed");
    EXPECT_TRUE(WaitFor([&] { return log.GetFrames().size() == 4; }));
    EXPECT_THAT(log.GetFrames(), ElementsAre("one", "two", "three", "unfined"));
}

TEST(SessionTest, APeerThatClosesMidFrameClosesWithoutDeliveringIt) {
    RawPair pair;
    SessionLog log(*pair.session);
    pair.raw.Send(MakeFrame("whole") + MakeFrameHeader(100) + "part");
    pair.raw.Close();
    EXPECT_TRUE(WaitForEnd(log));
    EXPECT_THAT(log.GetFrames(), ElementsAre("whole"));
    EXPECT_THAT(log.GetClosings(), kBothClosings);
}

TEST(SessionTest, CloseRunsEachClosedHandlerOnceAndTheProtocolsFirst) {
    LoopbackPair pair;
    SessionLog client(*pair.client), server(*pair.server);
    pair.client->Close();
    pair.client->Close();
    EXPECT_FALSE(pair.client->IsOpen());
    EXPECT_TRUE(WaitForEnd(client) && WaitForEnd(server));
    Settle(*pair.client);
    Settle(*pair.server);
    EXPECT_THAT(client.GetClosings(), kBothClosings);
    EXPECT_THAT(server.GetClosings(), kBothClosings);
}

TEST(SessionTest, AllHandlersRunOnOneThreadThatIsNotTheCallers) {
    LoopbackPair pair;
    SessionLog server(*pair.server);
    pair.client->Send("a");
    ASSERT_TRUE(WaitFor([&] { return server.GetFrames().size() == 1; }));
    pair.server->Close();
    ASSERT_TRUE(WaitForEnd(server));
    ASSERT_THAT(server.GetThreads(), SizeIs(3));
    for (const std::thread::id& thread : server.GetThreads()) {
        EXPECT_EQ(server.GetThreads()[0], thread);
        EXPECT_NE(std::this_thread::get_id(), thread);
    }
}

TEST(SessionTest, AClosedHandlerThatComesLateRunsOnce) {
    LoopbackPair pair;
    pair.client->Close();
    Settle(*pair.client);
    SessionLog log;
    log.AttachClosed(*pair.client);
    EXPECT_TRUE(WaitFor([&] { return log.GetClosings().size() == 1; }));
    log.AttachClosed(*pair.client);
    Settle(*pair.client);
    EXPECT_THAT(log.GetClosings(), ElementsAre("owner"));
}

TEST(SessionTest, AnEmptyFunctionTakesTheClosedHandlerAway) {
    LoopbackPair pair;
    SessionLog log(*pair.client);
    pair.client->SetConnectionClosedHandler({});
    pair.client->Close();
    EXPECT_TRUE(WaitFor([&] { return !log.GetClosings().empty(); }));
    Settle(*pair.client);
    EXPECT_THAT(log.GetClosings(), ElementsAre("protocol"));
}

TEST(SessionTest, FramesThatCameBeforeTheProtocolAreHandedOverInOrder) {
    RawPair pair;
    pair.raw.Send(MakeFrame("one") + MakeFrame("two"));
    Settle(*pair.session);
    SessionLog log(*pair.session);
    pair.raw.Send(MakeFrame("three"));
    EXPECT_TRUE(WaitFor([&] { return log.GetFrames().size() == 3; }));
    EXPECT_THAT(log.GetFrames(), ElementsAre("one", "two", "three"));
}

TEST(SessionTest, FramesOfAPeerThatHasGoneAreHandedOverBeforeItsEnd) {
    RawPair pair;
    pair.raw.Send(MakeFrame("last words"));
    pair.raw.Close();
    ASSERT_TRUE(WaitFor([&] { return !pair.session->IsOpen(); }));
    SessionLog log(*pair.session);
    EXPECT_TRUE(WaitForEnd(log));
    EXPECT_THAT(log.GetFrames(), ElementsAre("last words"));
}

TEST(SessionTest, CloseFromAMessageHandlerEndsTheDelivery) {
    RawPair pair;
    const auto frames = std::make_shared<std::atomic<int>>(0);
    zeltransport::Session* session = pair.session.get();
    SessionLog log;
    log.AttachClosed(*pair.session);
    pair.session->SetProtocolHandlers(
        [frames, session](const char*, std::size_t) {
            ++*frames;
            session->Close();
        },
        {});
    pair.raw.Send(MakeFrame("one") + MakeFrame("two"));
    EXPECT_TRUE(WaitFor([&] { return log.GetClosings().size() == 1; }));
    EXPECT_EQ(1, *frames);
}

TEST(SessionTest, CloseFromTheClosedHandlersIsHarmless) {
    LoopbackPair pair;
    const auto ran = std::make_shared<std::atomic<int>>(0);
    const auto close = [ran, session = pair.client.get()] {
        session->Close();
        session->Send("nobody hears this");
        ++*ran;
    };
    pair.client->SetProtocolHandlers({}, close);
    pair.client->SetConnectionClosedHandler(close);
    pair.client->Close();
    EXPECT_TRUE(WaitFor([&] { return *ran == 2; }));
    Settle(*pair.client);
    EXPECT_EQ(2, *ran);
}

TEST(SessionTest, NoHandlerRunsInsideACallAlsoOnTheIoThread) {
    LoopbackPair pair;
    const auto inside = std::make_shared<std::atomic<bool>>(false);
    const auto nested = std::make_shared<std::atomic<bool>>(false);
    const auto ends = std::make_shared<std::atomic<int>>(0);
    zeltransport::Session* session = pair.server.get();
    const auto onClosed = [=] {
        if (*inside) *nested = true;
        ++*ends;
    };
    session->SetProtocolHandlers(
        [=](const char*, std::size_t) {
            *inside = true;
            session->Close();
            session->SetConnectionClosedHandler(onClosed);
            session->SetProtocolHandlers({}, onClosed);
            session->RunSoon(onClosed);
            *inside = false;
        },
        {});
    pair.client->Send("go");
    EXPECT_TRUE(WaitFor([&] { return *ends == 3; }));
    EXPECT_FALSE(*nested);
}

TEST(SessionTest, AllHandlersAreDroppedAfterTheEnd) {
    LoopbackPair pair;
    SessionLog log(*pair.client);
    // The handler holds its session: only dropping it lets either go.
    pair.client->SetProtocolHandlers([held = pair.client](const char*, std::size_t) {}, {});
    EXPECT_FALSE(log.IsReleased());
    pair.client->Close();
    EXPECT_TRUE(WaitFor([&] { return log.IsReleased() && pair.client.use_count() == 1; }));
}

TEST(SessionTest, ASessionThatNobodyHoldsClosesItself) {
    LoopbackPair pair;
    SessionLog client(*pair.client), server(*pair.server);
    pair.client.reset();
    EXPECT_TRUE(WaitForEnd(client) && WaitForEnd(server));
    EXPECT_THAT(client.GetClosings(), kBothClosings);
}

TEST(SessionTest, AThrowingMessageHandlerClosesTheSession) {
    LoopbackPair pair;
    SessionLog log;
    log.AttachClosed(*pair.server);
    pair.server->SetProtocolHandlers([](const char*, std::size_t) { throw std::runtime_error("no"); }, {});
    pair.client->Send("a");
    EXPECT_TRUE(WaitFor([&] { return log.GetClosings().size() == 1; }));
}

TEST(SessionTest, AThrowingClosedHandlerDoesNotKeepTheOtherFromRunning) {
    LoopbackPair pair;
    SessionLog log;
    log.AttachClosed(*pair.client);
    pair.client->SetProtocolHandlers({}, [] { throw 7; });
    pair.client->Close();
    EXPECT_TRUE(WaitFor([&] { return log.GetClosings().size() == 1; }));
}

TEST(SessionTest, SendingToAPeerThatHasGoneEndsTheSessionNotTheProcess) {
    RawPair pair;
    SessionLog log(*pair.session);
    pair.raw.Close();
    EXPECT_TRUE(WaitFor([&] {
        pair.session->Send(std::string(1000, 'x'));
        return log.GetClosings().size() == 2;
    }));
}

TEST(SessionTest, WhatWasSentBeforeCloseStillArrives) {
    for (int i = 0; i < 50; ++i) {
        LoopbackPair pair;
        SessionLog log(*pair.client);
        pair.client->Send("unread by the server");
        pair.server->Send("one");
        pair.server->Send("two");
        pair.server->Close();
        ASSERT_TRUE(WaitForEnd(log));
        ASSERT_THAT(log.GetFrames(), ElementsAre("one", "two"));
    }
}

TEST(SessionTest, APeerThatTakesNothingHasItsSessionClosed) {
    RawPair pair;
    SessionLog log(*pair.session);
    const std::string frame(kMaxFrameSize, 'a');
    int sent = 0;
    while (pair.session->IsOpen() && sent < 10) {
        pair.session->Send(frame);
        ++sent;
    }
    EXPECT_TRUE(WaitForEnd(log));
    EXPECT_LT(sent, 10);
    EXPECT_GE(sent, 4);
}

TEST(SessionTest, CallsForLaterRunOnTheIoThreadAfterTheirTime) {
    LoopbackPair pair;
    const auto start = std::chrono::steady_clock::now();
    const auto thread = std::make_shared<std::atomic<std::thread::id>>();
    pair.client->RunAfter(std::chrono::milliseconds(20), [thread] { *thread = std::this_thread::get_id(); });
    EXPECT_TRUE(WaitFor([&] { return thread->load() != std::thread::id(); }));
    EXPECT_GE(std::chrono::steady_clock::now() - start, std::chrono::milliseconds(20));
    EXPECT_NE(std::this_thread::get_id(), thread->load());
}

TEST(SessionTest, CallsForLaterAreDroppedWithTheSession) {
    LoopbackPair pair;
    const auto held = std::make_shared<bool>(false);
    pair.client->RunAfter(std::chrono::hours(1), [held] { *held = true; });
    pair.client->Close();
    EXPECT_TRUE(WaitFor([&] { return held.use_count() == 1; }));
    pair.client->RunAfter(std::chrono::milliseconds(0), [held] { *held = true; });
    EXPECT_TRUE(WaitFor([&] { return held.use_count() == 1; }));
    EXPECT_FALSE(*held);
}

}  // namespace
