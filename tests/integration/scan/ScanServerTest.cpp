#include <string>

#include <boost/make_shared.hpp>
#include <gmock/gmock.h>
#include <zelcore/Serialization.h>

#include "ScanServerStage.h"

namespace zeltests {

namespace serialization = zelcore::serialization;
using zelaudiofilterhostui::ScannerProcess;

TEST_F(ScanServerTest, ServesAWholeConversation) {
    RawClient client;
    ASSERT_TRUE(client.Connect());
    EXPECT_THAT(client.Call("Connect", GetConnectParameters()), testing::HasSubstr("\"result\""));
    const std::string plugin = TestPlugin("vst/good/zel_gain" ZEL_MODULE);
    EXPECT_THAT(client.Call("BeginScanForPlugins", "[[\"2||" + plugin + "\"]]"), testing::HasSubstr("\"result\""));
    const auto info = boost::make_shared<boost::any>(serialization::FromJson(client.Call("GetScanInfo", "[]")));
    const auto value = serialization::GetVariantInObject(serialization::GetVariantInObject(info, "result"), "value");
    zelcore::utf8string locator;
    int progress = -1;
    int total = -1;
    bool goOn = false;
    EXPECT_TRUE(serialization::GetInObject(value, "locator", locator));
    EXPECT_TRUE(serialization::GetInObject(value, "progress", progress));
    EXPECT_TRUE(serialization::GetInObject(value, "total", total));
    EXPECT_TRUE(serialization::GetInObject(value, "continue", goOn));
    EXPECT_EQ("2||" + plugin, std::string(locator.data(), locator.size()));
    EXPECT_EQ(1, progress);
    EXPECT_EQ(1, total);
    EXPECT_TRUE(goOn);
    EXPECT_THAT(client.Call("ScanOneEntity", "[]"), testing::HasSubstr("\"result\""));
    EXPECT_THAT(ReadFile(GetPath("catalogue.xml.scan")), testing::HasSubstr("zel_gain" ZEL_MODULE));
    // The position does not go back when nothing is left.
    const std::string end = client.Call("GetScanInfo", "[]");
    EXPECT_THAT(end, testing::HasSubstr("\"continue\":false"));
    EXPECT_THAT(end, testing::HasSubstr("\"progress\":1"));
    EXPECT_THAT(client.Call("EndScan", "[]"), testing::HasSubstr("\"result\""));
}

TEST_F(ScanServerTest, EndsWhenItsClientGoes) {
    {
        RawClient client;
        ASSERT_TRUE(client.Connect());
        EXPECT_THAT(client.Call("Connect", GetConnectParameters()), testing::HasSubstr("\"result\""));
    }
    EXPECT_TRUE(EndsSoon());
}

TEST_F(ScanServerTest, EndsWhenItsClientGoesInTheMiddleOfAPlugin) {
    {
        RawClient client;
        ASSERT_TRUE(client.Connect());
        client.Call("Connect", GetConnectParameters());
        client.Call("BeginScanForPlugins", "[[\"2||" + TestPlugin("vst/bad/hang_when_opened" ZEL_MODULE) + "\"]]");
        client.SendFrame(
            "{\"jsonrpc\":\"2.0\",\"id\":1,\"method\":\"com.morva.zelaudiofilterscan.ScanOneEntity\",\"params\":[]}");
    }
    EXPECT_TRUE(EndsSoon());
}

TEST_F(ScanServerTest, RefusesASecondClient) {
    RawClient first;
    ASSERT_TRUE(first.Connect());
    EXPECT_THAT(first.Call("Connect", GetConnectParameters()), testing::HasSubstr("\"result\""));
    RawClient second;
    EXPECT_FALSE(second.TryConnect());
    EXPECT_THAT(first.Call("GetScanInfo", "[]"), testing::HasSubstr("\"error\""));
}

TEST_F(ScanServerTest, AnswersWhatMakesNoSenseWithErrorsAndGoesOn) {
    RawClient client;
    ASSERT_TRUE(client.Connect());
    EXPECT_THAT(client.Call("GetScanInfo", "[]"), testing::HasSubstr("\"error\""));
    EXPECT_THAT(client.Call("ScanOneEntity", "[]"), testing::HasSubstr("\"error\""));
    EXPECT_THAT(client.Call("EndScan", "[]"), testing::HasSubstr("\"error\""));
    EXPECT_THAT(client.Call("BeginScanForPlugins", "[[]]"), testing::HasSubstr("\"error\""));
    EXPECT_THAT(client.Call("Connect", "[]"), testing::HasSubstr("\"error\""));
    EXPECT_THAT(client.Call("Connect", "[1,2,3,4]"), testing::HasSubstr("\"error\""));
    EXPECT_THAT(client.Call("Connect", "[\"/a\",\"/b\",\"/c\",\"/etc/passwd\"]"), testing::HasSubstr("\"error\""));
    EXPECT_THAT(client.Call("Unknown", "[]"), testing::HasSubstr("-32601"));
    EXPECT_THAT(client.Call("Connect", GetConnectParameters()), testing::HasSubstr("\"result\""));
    EXPECT_THAT(client.Call("BeginScanForPlugins", "[[\"no locator\"]]"), testing::HasSubstr("\"error\""));
    EXPECT_THAT(client.Call("BeginScanForPlugins", "[[]]"), testing::HasSubstr("\"result\""));
    EXPECT_THAT(client.Call("BeginScanForPlugins", "[[]]"), testing::HasSubstr("\"error\""));
    EXPECT_THAT(client.Call("ScanOneEntity", "[]"), testing::HasSubstr("\"error\""));
    EXPECT_THAT(client.Call("GetScanInfo", "[]"), testing::HasSubstr("\"continue\":false"));
}

TEST_F(ScanServerTest, MalformedAndOversizedFramesEndTheConversationAndTheProcess) {
    for (const std::string& bytes :
         {std::string("\xff\xff\xff\xff", 4), std::string("\x00\x00\x00\x02", 4), RawClient::MakeHead(3) + "{[}",
          RawClient::MakeHead(100000) + std::string(100000, '[')}) {
        if (!ScannerProcess::IsRunning(mProcess)) {
            ScannerProcess::Terminate(mProcess);
            Start();
        }
        RawClient client;
        ASSERT_TRUE(client.Connect());
        client.SendBytes(bytes);
        while (!client.Receive().empty()) {
        }
        EXPECT_TRUE(EndsSoon());
    }
}

TEST_F(ScanServerTest, FrameThatIsNeverFinishedEndsWithTheClient) {
    {
        RawClient client;
        ASSERT_TRUE(client.Connect());
        EXPECT_FALSE(client.Call("GetScanInfo", "[]").empty());
        client.SendBytes(RawClient::MakeHead(1000) + "{");
    }
    EXPECT_TRUE(EndsSoon());
}

TEST_F(ScanServerTest, StartedTwiceAtOnceTheSecondWaitsForThePort) {
    void* const second = StartScanner();
    RawClient one;
    ASSERT_TRUE(one.Connect());
    EXPECT_THAT(one.Call("Connect", GetConnectParameters()), testing::HasSubstr("\"result\""));
    // The first one has stopped listening, and the second is on the port, but the profile is the first one's.
    RawClient two;
    ASSERT_TRUE(two.Connect());
    one.Close();
    EXPECT_THAT(two.Call("Connect", GetConnectParameters()), testing::HasSubstr("\"result\""));
    ScannerProcess::Terminate(second);
}

}  // namespace zeltests
