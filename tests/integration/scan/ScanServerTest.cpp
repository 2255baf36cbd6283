#include <algorithm>
#include <csignal>
#include <cstdlib>
#include <string>

#include <arpa/inet.h>
#include <boost/make_shared.hpp>
#include <gmock/gmock.h>
#include <netinet/in.h>
#include <sys/socket.h>
#include <sys/wait.h>
#include <unistd.h>
#include <zelaudiofilterhost/ScanProtocol.h>
#include <zelcore/File.h>
#include <zelcore/Serialization.h>
#include <zelcore/Utf.h>

#include "ProcessList.h"
#include "scan/ScannerProcess.h"
#include "ScanFixture.h"
#include "support/WaitFor.h"

namespace zeltests {

namespace serialization = zelcore::serialization;
using zelaudiofilterhostui::ScannerProcess;

namespace {

/// A client made of nothing but a socket.
class RawClient {
public:
    RawClient() : mSocket(-1) {}
    ~RawClient() { Close(); }
    RawClient(const RawClient&) = delete;
    RawClient& operator=(const RawClient&) = delete;

    /// Connects as soon as the scanner listens.
    bool Connect() {
        return WaitFor([this] { return TryConnect(); }, std::chrono::seconds(10));
    }

    bool TryConnect() {
        Close();
        mSocket = socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0);
        sockaddr_in address = {};
        address.sin_family = AF_INET;
        address.sin_port = htons(zelaudiofilterhost::scanprotocol::kScannerPort);
        address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
        if (connect(mSocket, reinterpret_cast<sockaddr*>(&address), sizeof address) == 0) return true;
        Close();
        return false;
    }

    void Close() {
        if (mSocket >= 0) close(mSocket);
        mSocket = -1;
    }

    void SendBytes(const std::string& bytes) {
        EXPECT_EQ(static_cast<ssize_t>(bytes.size()), send(mSocket, bytes.data(), bytes.size(), MSG_NOSIGNAL));
    }

    void SendFrame(const std::string& body) { SendBytes(MakeHead(body.size()) + body); }

    static std::string MakeHead(std::size_t size) {
        std::string head;
        for (int shift = 0; shift < 32; shift += 8) head += static_cast<char>((size >> shift) & 0xFF);
        return head;
    }

    /// The next frame, or an empty text when the connection is closed.
    std::string Receive() {
        std::string head;
        if (!ReceiveExactly(4, head)) return std::string();
        std::size_t size = 0;
        for (int i = 3; i >= 0; --i) size = size << 8 | static_cast<unsigned char>(head[static_cast<std::size_t>(i)]);
        std::string body;
        return ReceiveExactly(size, body) ? body : std::string();
    }

    std::string Call(const std::string& method, const std::string& parameters) {
        SendFrame("{\"jsonrpc\":\"2.0\",\"id\":1,\"method\":\"com.morva.zelaudiofilterscan." + method +
                  "\",\"params\":" + parameters + "}");
        return Receive();
    }

private:
    bool ReceiveExactly(std::size_t size, std::string& bytes) {
        while (bytes.size() < size) {
            char buffer[4096];
            const ssize_t count = recv(mSocket, buffer, std::min(sizeof buffer, size - bytes.size()), 0);
            if (count <= 0) return false;
            bytes.append(buffer, static_cast<std::size_t>(count));
        }
        return true;
    }

    int mSocket;
};

}  // namespace

/// The real scanner process, spoken to directly.
class ScanServerTest : public ScanFixture {
protected:
    ScanServerTest() {
        UseRealScanner();
        Start();
    }
    ~ScanServerTest() override {
        if (mProcess) ScannerProcess::Terminate(mProcess);
    }

    void Start() {
        mProcess = ScannerProcess::Start(zelcore::filesupport::File(mAppFolder.UPath("zelaudiofilterscan.exe")));
        ASSERT_TRUE(mProcess);
    }

    bool EndsSoon() {
        return WaitFor([this] { return !ScannerProcess::IsRunning(mProcess); }, std::chrono::seconds(10));
    }

    std::string GetConnectParameters() const {
        const std::string registry = GetPath("catalogue.xml");
        return "[\"" + registry + "\",\"" + GetPath("bans.xml") + "\",\"" + GetPath("permanent.xml") + "\",\"" +
               registry + ".scan\"]";
    }

    void* mProcess = nullptr;
};

TEST_F(ScanServerTest, ServesAWholeConversation) {
    RawClient client;
    ASSERT_TRUE(client.Connect());
    EXPECT_THAT(client.Call("Connect", GetConnectParameters()), testing::HasSubstr("\"result\""));
    const std::string plugin = TestPlugin("vst/good/zel_gain.so");
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
    EXPECT_THAT(ReadFile(GetPath("catalogue.xml.scan")), testing::HasSubstr("zel_gain.so"));
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
        client.Call("BeginScanForPlugins", "[[\"2||" + TestPlugin("vst/bad/hang_when_opened.so") + "\"]]");
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

TEST_F(ScanServerTest, TurnsAwayAClientOfAnotherProcessAndOfAnotherUserAndServesItsOwn) {
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

/// A host of its own process that starts a scanner and can be killed.
TEST_F(ScanServerTest, EndsWhenTheHostDies) {
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

TEST_F(ScanServerTest, StartedTwiceAtOnceTheSecondWaitsForThePort) {
    void* const second = ScannerProcess::Start(zelcore::filesupport::File(mAppFolder.UPath("zelaudiofilterscan.exe")));
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
