#include <zelmarshal/RPCServer.h>

#include <atomic>
#include <memory>
#include <stdexcept>
#include <string>
#include <thread>
#include <vector>

#include <boost/make_shared.hpp>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <zelcore/Serialization.h>
#include <zelmarshal/RPCClient.h>
#include <zeltransport/SocketTransport.h>

#include "RPCLog.h"
#include "support/WaitFor.h"
#include "unit/zeltransport/LoopbackPair.h"
#include "unit/zeltransport/SessionLog.h"

namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using zelcore::serialization::Array;
using zelcore::serialization::FromJson;
using zelcore::serialization::GetInObject;
using zelcore::serialization::GetVariantInObject;
using zelmarshal::RPCError;
using zelmarshal::RPCServer;
using zeltests::LoopbackPair;
using zeltests::RPCLog;
using zeltests::SessionLog;
using zeltests::WaitFor;

/// A server with a few methods, whose peer is a bare session that sends what a test tells it to.
class RPCServerTest : public testing::Test {
protected:
    RPCServerTest() {
        mServer->RegisterMethod("Echo", [](const Array& parameters, const RPCServer::Answer& answer) {
            answer.Reply(boost::any(parameters));
        });
        mServer->RegisterMethod("Keep", [this](const Array&, const RPCServer::Answer& answer) {
            mKept = answer;
            mIsKept = true;
        });
        mServer->RegisterMethod("Forget", [](const Array&, const RPCServer::Answer&) {});
        mServer->RegisterMethod("Refuse", [](const Array&, const RPCServer::Answer&) { throw RPCError(42, "no"); });
        mServer->RegisterMethod("Break",
                                [](const Array&, const RPCServer::Answer&) { throw std::runtime_error("broken"); });
        mServer->RegisterMethod("Odd", [](const Array&, const RPCServer::Answer&) { throw 7; });
        mServer->RegisterMethod(
            "Foreign", [](const Array&, const RPCServer::Answer& answer) { answer.Reply(std::vector<int>()); });
        mServer->RegisterMethod("Long", [](const Array&, const RPCServer::Answer& answer) {
            answer.Reply(zelcore::utf8string(zeltransport::kMaxFrameSize, 'x'));
        });
        mServer->RegisterMethod("Twice", [](const Array&, const RPCServer::Answer& answer) {
            answer.Reply(boost::int32_t(1));
            answer.Reply(boost::int32_t(2));
            answer.Fail(3, "three");
            throw RPCError(4, "four");
        });
        mServer->Serve(mPair.server, [this] { ++mClosed; });
    }
    ~RPCServerTest() override { mServer.reset(); }

    /// What comes back for a frame, as JSON in one order of members.
    std::string Ask(const std::string& frame) {
        const std::size_t before = mReplies.GetFrames().size();
        mPair.client->Send(frame);
        if (!WaitFor([&] { return mReplies.GetFrames().size() > before; })) return "no reply";
        return zelcore::serialization::ToJson(FromJson(mReplies.GetFrames()[before]));
    }
    /// The code and id of the error that comes back: "<code> <id as JSON>".
    std::string AskForError(const std::string& frame) {
        const auto reply = boost::make_shared<boost::any>(FromJson(Ask(frame)));
        int code = 0;
        zelcore::utf8string message;
        EXPECT_TRUE(GetInObject(GetVariantInObject(reply, "error"), "code", code));
        EXPECT_TRUE(GetInObject(GetVariantInObject(reply, "error"), "message", message));
        EXPECT_FALSE(message.empty());
        const auto id = GetVariantInObject(reply, "id");
        return std::to_string(code) + " " + (id ? zelcore::serialization::ToJson(*id) : std::string("without id"));
    }

    LoopbackPair mPair;
    SessionLog mReplies{*mPair.client};
    RPCServer::Answer mKept;
    std::atomic<bool> mIsKept{false};
    std::atomic<int> mClosed{0};
    std::unique_ptr<RPCServer> mServer = std::make_unique<RPCServer>();
};

TEST_F(RPCServerTest, AReplyCarriesVersionIdAndTheValue) {
    EXPECT_EQ(zelcore::serialization::ToJson(FromJson(R"({"jsonrpc":"2.0","id":5,"result":{"value":[1,"x"]}})")),
              Ask(R"({"jsonrpc":"2.0","id":5,"method":"Echo","params":[1,"x"],"client":"Tester"})"));
}

TEST_F(RPCServerTest, ParametersMayBeMissing) {
    EXPECT_EQ(zelcore::serialization::ToJson(FromJson(R"({"jsonrpc":"2.0","id":5,"result":{"value":[]}})")),
              Ask(R"({"jsonrpc":"2.0","id":5,"method":"Echo"})"));
}

TEST_F(RPCServerTest, TextAndLargeNumbersAreIdsToo) {
    EXPECT_EQ("-32601 \"a\"", AskForError(R"({"jsonrpc":"2.0","id":"a","method":"None"})"));
    EXPECT_EQ("-32601 9999999999", AskForError(R"({"jsonrpc":"2.0","id":9999999999,"method":"None"})"));
}

TEST_F(RPCServerTest, MalformedRequestsGetTheProtocolsErrors) {
    EXPECT_EQ("-32600 null", AskForError("[]"));
    EXPECT_EQ("-32600 null", AskForError("7"));
    EXPECT_EQ("-32600 null", AskForError("{}"));
    EXPECT_EQ("-32600 null", AskForError(R"([{"jsonrpc":"2.0","id":1,"method":"Echo"}])"));
    EXPECT_EQ("-32600 1", AskForError(R"({"id":1,"method":"Echo"})"));
    EXPECT_EQ("-32600 1", AskForError(R"({"jsonrpc":"1.0","id":1,"method":"Echo"})"));
    EXPECT_EQ("-32600 1", AskForError(R"({"jsonrpc":"2.0","id":1})"));
    EXPECT_EQ("-32600 1", AskForError(R"({"jsonrpc":"2.0","id":1,"method":7})"));
    EXPECT_EQ("-32600 null", AskForError(R"({"jsonrpc":"2.0","id":null,"method":"Echo"})"));
    EXPECT_EQ("-32600 null", AskForError(R"({"jsonrpc":"2.0","id":{},"method":"Echo"})"));
    EXPECT_EQ("-32600 null", AskForError(R"({"jsonrpc":"2.0","id":1.5,"method":"Echo"})"));
    EXPECT_EQ("-32600 1", AskForError(R"({"jsonrpc":"2.0","id":1,"result":{"value":1}})"));
    EXPECT_EQ("-32601 1", AskForError(R"({"jsonrpc":"2.0","id":1,"method":"None"})"));
    EXPECT_EQ("-32602 1", AskForError(R"({"jsonrpc":"2.0","id":1,"method":"Echo","params":{"a":1}})"));
    EXPECT_EQ("-32602 1", AskForError(R"({"jsonrpc":"2.0","id":1,"method":"Echo","params":7})"));
    EXPECT_TRUE(mPair.server->IsOpen());
}

TEST_F(RPCServerTest, AnIdThatWouldMakeTheAnswerTooLongIsNone) {
    const auto ask = [this](std::size_t length) {
        return AskForError(R"({"jsonrpc":"2.0","method":"None","id":")" + std::string(length, 'i') + "\"}");
    };
    EXPECT_EQ("-32601 \"" + std::string(256, 'i') + "\"", ask(256));
    EXPECT_EQ("-32600 null", ask(257));
    EXPECT_EQ("-32600 null", ask(15 * 1024 * 1024));
}

TEST_F(RPCServerTest, AFrameThatIsNotJsonGetsAnErrorAndTheSessionCloses) {
    for (const std::string& frame :
         std::vector<std::string>{"", "no", "{\"jsonrpc\":", "\xFF", std::string(100000, '['),
                                  R"({"jsonrpc":"2.0","id":1,"method":"Echo","params":)" + std::string(50, '[') +
                                      std::string(50, ']') + "}"}) {
        SCOPED_TRACE(frame.substr(0, 60));
        LoopbackPair pair;
        SessionLog replies(*pair.client);
        RPCServer server;
        server.Serve(pair.server, {});
        pair.client->Send(frame);
        ASSERT_TRUE(WaitFor([&] { return replies.GetClosings().size() == 2; }));
        ASSERT_EQ(1u, replies.GetFrames().size());
        EXPECT_THAT(replies.GetFrames()[0], testing::HasSubstr("-32700"));
    }
}

TEST_F(RPCServerTest, WhatAMethodThrowsBecomesTheError) {
    EXPECT_EQ("42 1", AskForError(R"({"jsonrpc":"2.0","id":1,"method":"Refuse"})"));
    EXPECT_EQ("-32603 2", AskForError(R"({"jsonrpc":"2.0","id":2,"method":"Break"})"));
    EXPECT_THAT(mReplies.GetFrames().back(), testing::HasSubstr("broken"));
    EXPECT_EQ("-32603 3", AskForError(R"({"jsonrpc":"2.0","id":3,"method":"Odd"})"));
}

TEST_F(RPCServerTest, AValueThatCannotBeWrittenBecomesAnError) {
    EXPECT_EQ("-32603 1", AskForError(R"({"jsonrpc":"2.0","id":1,"method":"Foreign"})"));
    EXPECT_EQ("-32603 2", AskForError(R"({"jsonrpc":"2.0","id":2,"method":"Long"})"));
    EXPECT_TRUE(mPair.server->IsOpen());
}

TEST_F(RPCServerTest, AnAnswerThatIsForgottenBecomesAnError) {
    EXPECT_EQ("-32603 1", AskForError(R"({"jsonrpc":"2.0","id":1,"method":"Forget"})"));
}

TEST_F(RPCServerTest, OnlyTheFirstAnswerCounts) {
    EXPECT_THAT(Ask(R"({"jsonrpc":"2.0","id":1,"method":"Twice"})"), testing::HasSubstr("\"value\":1"));
    Ask(R"({"jsonrpc":"2.0","id":2,"method":"Echo"})");
    EXPECT_EQ(2u, mReplies.GetFrames().size());
}

TEST_F(RPCServerTest, AnAnswerMayComeLaterFromAnotherThread) {
    mPair.client->Send(R"({"jsonrpc":"2.0","id":1,"method":"Keep"})");
    ASSERT_TRUE(WaitFor([&] { return mIsKept.load(); }));
    std::thread([answer = mKept] { answer.Reply(true); }).join();
    ASSERT_TRUE(WaitFor([&] { return mReplies.GetFrames().size() == 1; }));
    EXPECT_THAT(mReplies.GetFrames()[0], testing::HasSubstr("true"));
}

TEST_F(RPCServerTest, AnAnswerAfterTheEndIsDropped) {
    mPair.client->Send(R"({"jsonrpc":"2.0","id":1,"method":"Keep"})");
    ASSERT_TRUE(WaitFor([&] { return mIsKept.load(); }));
    mServer.reset();
    mPair.serverTransport.reset();
    mKept.Reply(true);
    EXPECT_THAT(mReplies.GetFrames(), IsEmpty());
}

TEST_F(RPCServerTest, NotificationsGetNoReply) {
    mPair.client->Send(R"({"jsonrpc":"2.0","method":"Echo"})");
    mPair.client->Send(R"({"jsonrpc":"2.0","method":"None"})");
    mPair.client->Send(R"({"jsonrpc":"2.0","method":"Break"})");
    EXPECT_EQ("-32601 1", AskForError(R"({"jsonrpc":"2.0","id":1,"method":"None"})"));
    EXPECT_EQ(1u, mReplies.GetFrames().size());
}

TEST_F(RPCServerTest, TheClosedHandlerRunsOnce) {
    mPair.client->Close();
    EXPECT_TRUE(WaitFor([&] { return mClosed == 1; }));
    mPair.serverTransport.reset();
    EXPECT_EQ(1, mClosed);
}

TEST_F(RPCServerTest, LettingGoClosesTheSessionAndRunsNothingAfterwards) {
    mPair.server.reset();
    mServer.reset();
    EXPECT_TRUE(WaitFor([&] { return mReplies.GetClosings().size() == 2; }));
    EXPECT_EQ(0, mClosed);
}

TEST_F(RPCServerTest, LettingGoInAMethodIsHarmless) {
    LoopbackPair pair;
    SessionLog replies(*pair.client);
    const auto server = std::make_shared<std::unique_ptr<RPCServer>>(std::make_unique<RPCServer>());
    (*server)->RegisterMethod("End", [server](const Array&, const RPCServer::Answer& answer) {
        const auto held = server;
        held->reset();
        answer.Reply(true);
    });
    (*server)->Serve(pair.server, {});
    pair.server.reset();
    pair.client->Send(R"({"jsonrpc":"2.0","id":1,"method":"End"})");
    EXPECT_TRUE(WaitFor([&] { return replies.GetClosings().size() == 2; }));
}

TEST_F(RPCServerTest, AServerServesOnce) { EXPECT_THROW(mServer->Serve(mPair.server, {}), std::logic_error); }

TEST(RPCTest, ClientAndServerUnderstandOneAnother) {
    LoopbackPair pair;
    RPCServer server;
    server.RegisterMethod("Sum", [](const Array& parameters, const RPCServer::Answer& answer) {
        boost::int32_t sum = 0;
        for (const auto& parameter : parameters) sum += boost::any_cast<boost::int32_t>(*parameter);
        answer.Reply(sum);
    });
    server.Serve(pair.server, {});
    zelmarshal::RPCClient client(pair.client, "Tester");
    RPCLog log;
    log.Call(client, "Sum", zeltests::MakeParameters({boost::int32_t(2), boost::int32_t(3)}));
    log.Call(client, "Sum", zeltests::MakeParameters({zelcore::utf8string("not a number")}));
    log.Call(client, "None");
    ASSERT_TRUE(WaitFor([&] { return log.GetLines().size() == 3; }));
    EXPECT_THAT(log.GetLines(), ElementsAre("reply 1 5", "error -32603", "error -32601"));
}

TEST(RPCErrorTest, CodesAreThoseOfTheProtocol) {
    EXPECT_EQ(-32700, zelmarshal::kErrorParse);
    EXPECT_EQ(-32600, zelmarshal::kErrorInvalidRequest);
    EXPECT_EQ(-32601, zelmarshal::kErrorMethodNotFound);
    EXPECT_EQ(-32602, zelmarshal::kErrorInvalidParams);
    EXPECT_EQ(-32603, zelmarshal::kErrorInternal);
    const RPCError error(7, "seven");
    EXPECT_EQ(7, error.GetCode());
    EXPECT_STREQ("seven", error.what());
}

}  // namespace
