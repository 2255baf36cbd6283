#include <zelmarshal/RPCClient.h>

#include <atomic>
#include <chrono>
#include <future>
#include <memory>
#include <string>
#include <thread>
#include <vector>

#include <boost/make_shared.hpp>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <zelcore/Serialization.h>
#include <zeltransport/SocketTransport.h>

#include "RPCLog.h"
#include "support/WaitFor.h"
#include "unit/zeltransport/LoopbackPair.h"
#include "unit/zeltransport/SessionLog.h"

namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::SizeIs;
using zelcore::serialization::BuildCall;
using zelcore::serialization::SerializationError;
using zelmarshal::RPCClient;
using zeltests::LoopbackPair;
using zeltests::RPCLog;
using zeltests::SessionLog;
using zeltests::WaitFor;

const std::string kLost = "error " + std::to_string(zelmarshal::kErrorConnectionLost);
const std::string kBad = "error " + std::to_string(zelmarshal::kErrorBadReply);
const std::string kTimeout = "error " + std::to_string(zelmarshal::kErrorTimeout);

/// A client whose peer is a bare session that answers what a test tells it to.
class RPCClientTest : public testing::Test {
protected:
    void WaitForRequests(std::size_t count) {
        ASSERT_TRUE(WaitFor([&] { return mRequests.GetFrames().size() >= count; }));
    }
    void WaitForLines(std::size_t count) {
        ASSERT_TRUE(WaitFor([&] { return mLog.GetLines().size() >= count; }));
    }
    bool IsClosedByClient() {
        return WaitFor([&] { return !mRequests.GetClosings().empty(); });
    }
    /// One request is outstanding; the peer sends `reply`, in which @ stands for the id.
    void AnswerOneRequestWith(std::string reply) {
        const std::string id = std::to_string(mLog.Call(*mClient, "Test"));
        WaitForRequests(1);
        for (std::size_t at; (at = reply.find('@')) != std::string::npos;) reply.replace(at, 1, id);
        mPair.server->Send(reply);
        WaitForLines(1);
    }

    LoopbackPair mPair;
    SessionLog mRequests{*mPair.server};
    std::unique_ptr<RPCClient> mClient = std::make_unique<RPCClient>(mPair.client, "Tester");
    RPCLog mLog;
};

TEST_F(RPCClientTest, ARequestCarriesVersionIdMethodParametersAndClientName) {
    const int id = mLog.Call(*mClient, "Add", zeltests::MakeParameters({boost::int32_t(1), zelcore::utf8string("x")}));
    WaitForRequests(1);
    const boost::any tree = zelcore::serialization::FromJson(mRequests.GetFrames()[0]);
    EXPECT_EQ(zelcore::serialization::ToJson(tree), zelcore::serialization::ToJson(zelcore::serialization::FromJson(
                                                        R"({"jsonrpc":"2.0","id":)" + std::to_string(id) +
                                                        R"(,"method":"Add","params":[1,"x"],"client":"Tester"})")));
}

TEST_F(RPCClientTest, AReplyReachesItsRequestWithValueAndId) {
    AnswerOneRequestWith(R"({"jsonrpc":"2.0","id":@,"result":{"value":{"a":[1,null]}}})");
    EXPECT_THAT(mLog.GetLines(), ElementsAre("reply 1 {\"a\":[1,null]}"));
    EXPECT_NE(std::this_thread::get_id(), mLog.GetThread());
    EXPECT_TRUE(mPair.client->IsOpen());
}

TEST_F(RPCClientTest, ANullValueIsAReply) {
    AnswerOneRequestWith(R"({"jsonrpc":"2.0","id":@,"result":{"value":null}})");
    EXPECT_THAT(mLog.GetLines(), ElementsAre("reply 1 null"));
}

TEST_F(RPCClientTest, AnErrorReplyReachesTheErrorHandler) {
    AnswerOneRequestWith(R"({"jsonrpc":"2.0","id":@,"error":{"code":-32601,"message":"no such"}})");
    EXPECT_THAT(mLog.GetLines(), ElementsAre("error -32601"));
    EXPECT_TRUE(mPair.client->IsOpen());
}

TEST_F(RPCClientTest, RepliesMayComeInAnyOrder) {
    const int first = mLog.Call(*mClient, "One");
    const int second = mLog.Call(*mClient, "Two");
    EXPECT_NE(first, second);
    WaitForRequests(2);
    for (const int id : {second, first}) {
        mPair.server->Send(R"({"jsonrpc":"2.0","id":)" + std::to_string(id) + R"(,"result":{"value":0}})");
    }
    WaitForLines(2);
    EXPECT_THAT(mLog.GetLines(),
                ElementsAre("reply " + std::to_string(second) + " 0", "reply " + std::to_string(first) + " 0"));
}

TEST_F(RPCClientTest, RepliesThatCannotBeUnderstoodFailTheirRequestAndClose) {
    for (const char* reply : {
             R"({"jsonrpc":"2.0","id":@})",
             R"({"jsonrpc":"2.0","id":@,"result":7})",
             R"({"jsonrpc":"2.0","id":@,"result":{}})",
             R"({"jsonrpc":"2.0","id":@,"result":{"value":1},"error":{"code":1,"message":"both"}})",
             R"({"jsonrpc":"2.0","id":@,"error":"text"})",
             R"({"jsonrpc":"2.0","id":@,"error":{"code":"1","message":"text as code"}})",
             R"({"jsonrpc":"2.0","id":@,"error":{"code":1,"message":5}})",
         }) {
        SCOPED_TRACE(reply);
        LoopbackPair pair;
        SessionLog requests(*pair.server);
        RPCClient client(pair.client, "Tester");
        RPCLog log;
        ASSERT_EQ(1, log.Call(client, "Test"));
        std::string text = reply;
        text.replace(text.find('@'), 1, "1");
        pair.server->Send(text);
        EXPECT_TRUE(WaitFor([&] { return !requests.GetClosings().empty() && !log.GetLines().empty(); }));
        EXPECT_THAT(log.GetLines(), ElementsAre(kBad));
    }
}

TEST_F(RPCClientTest, MessagesThatAreNoRepliesCloseAndTheRequestIsLost) {
    for (const std::string& message : std::vector<std::string>{
             "", "not JSON", "[]", "7", "null", "{}", R"({"jsonrpc":"2.0","id":1,"result":{"value":1}} more)",
             R"({"id":1,"result":{"value":1}})", R"({"jsonrpc":"1.0","id":1,"result":{"value":1}})",
             R"({"jsonrpc":2.0,"id":1,"result":{"value":1}})", R"({"jsonrpc":"2.0","result":{"value":1}})",
             R"({"jsonrpc":"2.0","id":"1","result":{"value":1}})", R"({"jsonrpc":"2.0","id":1.5,"result":{"value":1}})",
             R"({"jsonrpc":"2.0","id":null,"error":{"code":-32700,"message":"?"}})",
             R"({"jsonrpc":"2.0","id":99999999999,"result":{"value":1}})", std::string(5000, '['),
             R"({"jsonrpc":"2.0","id":1,"result":{"value":)" + std::string(100000, '[') + std::string(100000, ']') +
                 "}}",
             "\xFF\xFE", std::string(3, '\0')}) {
        SCOPED_TRACE(message.substr(0, 80));
        LoopbackPair pair;
        SessionLog requests(*pair.server);
        RPCClient client(pair.client, "Tester");
        RPCLog log;
        ASSERT_EQ(1, log.Call(client, "Test"));
        pair.server->Send(message);
        EXPECT_TRUE(WaitFor([&] { return !requests.GetClosings().empty() && !log.GetLines().empty(); }));
        EXPECT_THAT(log.GetLines(), ElementsAre(kLost));
    }
}

TEST_F(RPCClientTest, AReplyNobodyAskedForCloses) {
    mPair.server->Send(R"({"jsonrpc":"2.0","id":12345,"result":{"value":1}})");
    EXPECT_TRUE(IsClosedByClient());
}

TEST_F(RPCClientTest, ASecondReplyClosesAndRunsNoHandlerAgain) {
    AnswerOneRequestWith(R"({"jsonrpc":"2.0","id":@,"result":{"value":1}})");
    mPair.server->Send(R"({"jsonrpc":"2.0","id":1,"result":{"value":2}})");
    EXPECT_TRUE(IsClosedByClient());
    EXPECT_THAT(mLog.GetLines(), ElementsAre("reply 1 1"));
}

TEST_F(RPCClientTest, ALostConnectionEndsAllRequestsBeforeTheOwnerHears) {
    mPair.client->SetConnectionClosedHandler([log = mLog] { log.Add("closed"); });
    for (int i = 0; i < 3; ++i) mLog.Call(*mClient, "Test");
    WaitForRequests(3);
    mPair.server->Close();
    WaitForLines(4);
    EXPECT_THAT(mLog.GetLines(), ElementsAre(kLost, kLost, kLost, "closed"));
}

TEST_F(RPCClientTest, ARequestOnAClosedSessionIsLostOnTheIoThread) {
    mPair.client->Close();
    ASSERT_TRUE(IsClosedByClient());
    mLog.Call(*mClient, "Test");
    WaitForLines(1);
    EXPECT_THAT(mLog.GetLines(), ElementsAre(kLost));
    EXPECT_NE(std::this_thread::get_id(), mLog.GetThread());
}

TEST_F(RPCClientTest, ARequestWithoutATransportIsLostAtOnce) {
    mPair.clientTransport.reset();
    mLog.Call(*mClient, "Test");
    EXPECT_THAT(mLog.GetLines(), ElementsAre(kLost));
}

TEST_F(RPCClientTest, TheEndOfTheTransportEndsTheRequests) {
    mLog.Call(*mClient, "Test");
    mPair.clientTransport.reset();
    EXPECT_THAT(mLog.GetLines(), ElementsAre(kLost));
}

TEST_F(RPCClientTest, ARequestSentFromALostRequestsHandlerIsLostToo) {
    RPCClient* client = mClient.get();
    const auto sentFromThere = std::make_shared<std::atomic<bool>>(false);
    client->SendRequest(
        BuildCall("Test", zelcore::serialization::Array()), {},
        [=, log = mLog](int code, const std::string&) {
            log.Add("error " + std::to_string(code));
            log.Call(*client, "Again");
            *sentFromThere = true;
        },
        0);
    mPair.server->Close();
    WaitForLines(2);
    EXPECT_TRUE(*sentFromThere);
    EXPECT_THAT(mLog.GetLines(), ElementsAre(kLost, kLost));
}

TEST_F(RPCClientTest, ARequestTimesOutAndItsLateReplyIsIgnored) {
    ASSERT_EQ(1, mLog.Call(*mClient, "Slow", boost::any(), 30));
    ASSERT_EQ(2, mLog.Call(*mClient, "Patient", boost::any(), 60000));
    WaitForLines(1);
    EXPECT_THAT(mLog.GetLines(), ElementsAre(kTimeout));
    mPair.server->Send(R"({"jsonrpc":"2.0","id":1,"result":{"value":1}})");
    mPair.server->Send(R"({"jsonrpc":"2.0","id":2,"result":{"value":2}})");
    WaitForLines(2);
    EXPECT_THAT(mLog.GetLines(), ElementsAre(kTimeout, "reply 2 2"));
    EXPECT_TRUE(mPair.client->IsOpen());
    mPair.server->Send(R"({"jsonrpc":"2.0","id":1,"result":{"value":1}})");
    EXPECT_TRUE(IsClosedByClient()) << "the second late reply is one too many";
}

TEST_F(RPCClientTest, EveryTimeoutRunsWhateverTheOrderOfSending) {
    for (const int timeout : {40, 10, 30, 20, 10}) mLog.Call(*mClient, "Slow", boost::any(), timeout);
    WaitForLines(5);
    EXPECT_THAT(mLog.GetLines(), testing::Each(kTimeout));
    mPair.server->Close();
    ASSERT_TRUE(WaitFor([&] { return !mPair.client->IsOpen(); }));
    EXPECT_THAT(mLog.GetLines(), SizeIs(5));
}

TEST_F(RPCClientTest, RequestsThatCannotBeWrittenThrowAndSendNothing) {
    const auto send = [&](const boost::any& request) {
        mClient->SendRequest(boost::make_shared<boost::any>(request), mLog.OnReply(), mLog.OnError(), 0);
    };
    EXPECT_THROW(send(boost::any()), SerializationError);
    EXPECT_THROW(send(zelcore::serialization::Array()), SerializationError);
    EXPECT_THROW(send(zelcore::serialization::Object()), SerializationError);
    EXPECT_THROW(send(*BuildCall("Test", zelcore::serialization::Object())), SerializationError);
    EXPECT_THROW(mLog.Call(*mClient, "Test", zeltests::MakeParameters({std::vector<int>()})), SerializationError);
    EXPECT_THROW(mClient->SendRequest(nullptr, mLog.OnReply(), mLog.OnError(), 0), SerializationError);
    const zelcore::utf8string large(zeltransport::kMaxFrameSize, 'x');
    EXPECT_THROW(mLog.Call(*mClient, "Test", zeltests::MakeParameters({large})), SerializationError);
    EXPECT_TRUE(mPair.client->IsOpen());
    EXPECT_TRUE(mLog.IsReleased());
    EXPECT_THAT(mRequests.GetFrames(), IsEmpty());
}

TEST_F(RPCClientTest, LettingGoDropsWhatIsOutstanding) {
    mLog.Call(*mClient, "Test", boost::any(), 60000);
    WaitForRequests(1);
    mClient.reset();
    EXPECT_TRUE(mLog.IsReleased());
    mPair.server->Send(R"({"jsonrpc":"2.0","id":1,"result":{"value":1}})");
    mPair.server->Close();
    ASSERT_TRUE(WaitFor([&] { return !mPair.client->IsOpen(); }));
    EXPECT_THAT(mLog.GetLines(), IsEmpty());
}

TEST_F(RPCClientTest, LettingGoInAHandlerStartsNoOtherHandler) {
    const auto held = std::make_shared<std::unique_ptr<RPCClient>>(std::move(mClient));
    const auto dropped = std::make_shared<int>(0);
    for (int i = 0; i < 3; ++i) {
        (*held)->SendRequest(
            BuildCall("Test", zelcore::serialization::Array()), [dropped](const boost::shared_ptr<boost::any>&, int) {},
            [held, log = mLog](int, const std::string&) {
                log.Add("error");
                held->reset();
            },
            0);
    }
    mPair.client->SetConnectionClosedHandler([log = mLog] { log.Add("closed"); });
    mPair.server->Close();
    WaitForLines(2);
    EXPECT_THAT(mLog.GetLines(), ElementsAre("error", "closed"));
    EXPECT_EQ(1, dropped.use_count());
}

TEST_F(RPCClientTest, LettingGoElsewhereWaitsForTheHandlerThatRuns) {
    std::promise<void> entered, goOn;
    std::atomic<bool> left{false};
    mClient->SendRequest(
        BuildCall("Test", zelcore::serialization::Array()),
        [&](const boost::shared_ptr<boost::any>&, int) {
            entered.set_value();
            goOn.get_future().wait();
            left = true;
        },
        {}, 0);
    mPair.server->Send(R"({"jsonrpc":"2.0","id":1,"result":{"value":1}})");
    entered.get_future().wait();
    std::thread releaser([&] {
        goOn.set_value();
        mClient.reset();
        EXPECT_TRUE(left);
    });
    releaser.join();
}

TEST_F(RPCClientTest, AThrowingHandlerClosesTheSessionAndTheOthersHearOfIt) {
    mClient->SendRequest(
        BuildCall("Test", zelcore::serialization::Array()), [](const boost::shared_ptr<boost::any>&, int) { throw 1; },
        {}, 0);
    mClient->SendRequest(
        BuildCall("Test", zelcore::serialization::Array()), {}, [](int, const std::string&) { throw 2; }, 0);
    mLog.Call(*mClient, "Test");
    mPair.server->Send(R"({"jsonrpc":"2.0","id":1,"result":{"value":1}})");
    WaitForLines(1);
    EXPECT_THAT(mLog.GetLines(), ElementsAre(kLost));
}

TEST_F(RPCClientTest, LettingGoAtAnyMomentRunsNoHandlerAfterwards) {
    for (int i = 0; i < 100; ++i) {
        LoopbackPair pair;
        pair.server->SetProtocolHandlers(
            [session = pair.server.get(), id = std::make_shared<int>(0)](const char*, std::size_t) {
                session->Send(R"({"jsonrpc":"2.0","id":)" + std::to_string(++*id) + R"(,"result":{"value":1}})");
            },
            {});
        std::atomic<bool> gone{false};
        std::atomic<int> late{0};
        std::atomic<int> ran{0};
        {
            RPCClient client(pair.client, "Tester");
            const auto handle = [&] {
                if (gone) ++late;
                ++ran;
            };
            for (int request = 0; request < 20; ++request) {
                client.SendRequest(
                    BuildCall("Test", zelcore::serialization::Array()),
                    [handle](const boost::shared_ptr<boost::any>&, int) { handle(); },
                    [handle](int, const std::string&) { handle(); }, 1 + i % 3);
            }
            const auto moment = std::chrono::steady_clock::now() + std::chrono::microseconds(i * 37 % 500);
            while (std::chrono::steady_clock::now() < moment) continue;
            if (i % 4 == 0) pair.server->Close();
        }
        gone = true;
        pair.clientTransport.reset();
        pair.serverTransport.reset();
        EXPECT_EQ(0, late);
        EXPECT_LE(ran, 20);
    }
}

}  // namespace
