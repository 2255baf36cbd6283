#include <chrono>
#include <string>
#include <string_view>
#include <thread>
#include <vector>

#include <gtest/gtest.h>
#include <zeltransport/SocketTransport.h>

#include "LoopbackPair.h"
#include "OwnProcess.h"
#include "RawSocket.h"
#include "SessionLog.h"
#include "support/WaitFor.h"

namespace {

using zeltests::Acceptor;
using zeltests::GetDataKilobytes;
using zeltests::MakeFrame;
using zeltests::MakeFrameHeader;
using zeltests::RawSocket;
using zeltests::SessionLog;
using zeltests::WaitFor;
using zeltransport::kMaxFrameSize;

TEST(HostilePeerTest, AnnouncementsAloneTakeNoMemory) {
    zeltransport::ServerOptions options;
    options.oneClient = false;
    Acceptor acceptor(options);
    std::vector<RawSocket> peers;
    std::vector<boost::shared_ptr<zeltransport::Session>> sessions;
    std::vector<SessionLog> logs;
    const long before = GetDataKilobytes();
    for (int i = 0; i < 64; ++i) {
        peers.push_back(RawSocket::Connect(acceptor.GetPort()));
        sessions.push_back(acceptor.WaitForSession());
        logs.emplace_back(*sessions.back());
        peers.back().Send(MakeFrame("here") + MakeFrameHeader(static_cast<std::uint32_t>(kMaxFrameSize)) + "few");
        ASSERT_TRUE(WaitFor([&] { return logs.back().GetFrames().size() == 1; }));
    }
    // A gigabyte was announced.
    EXPECT_LT(GetDataKilobytes() - before, 256 * 1024);
    for (const auto& session : sessions) EXPECT_TRUE(session->IsOpen());
}

TEST(HostilePeerTest, APeerThatNobodyListensToIsHeldUpNotStored) {
    Acceptor acceptor;
    const RawSocket raw = RawSocket::Connect(acceptor.GetPort());
    const auto session = acceptor.WaitForSession();
    const std::string frame = MakeFrame(std::string(1024 * 1024, 'x'));
    std::size_t sent = 0;
    auto lastProgress = std::chrono::steady_clock::now();
    while (sent < 8 * kMaxFrameSize && std::chrono::steady_clock::now() - lastProgress < std::chrono::seconds(1)) {
        const std::size_t at = sent % frame.size();
        const std::size_t size = raw.SendSome(std::string_view(frame).substr(at));
        sent += size;
        if (size > 0) {
            lastProgress = std::chrono::steady_clock::now();
        } else {
            std::this_thread::yield();
        }
    }
    EXPECT_LT(sent, 4 * kMaxFrameSize);
    EXPECT_GT(sent, kMaxFrameSize);
    EXPECT_TRUE(session->IsOpen());

    SessionLog log(*session);
    EXPECT_TRUE(WaitFor([&] { return log.GetFrames().size() == sent / frame.size(); }));
}

}  // namespace
