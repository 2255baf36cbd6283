#include <atomic>
#include <chrono>
#include <memory>
#include <random>
#include <string>
#include <thread>

#include <boost/weak_ptr.hpp>
#include <gtest/gtest.h>
#include <zeltransport/SocketTransport.h>

#include "LoopbackPair.h"
#include "support/WaitFor.h"

namespace {

using zeltests::LoopbackPair;
using zeltests::WaitFor;
using zeltransport::Session;

/// How often the two closed handlers of a session ran.
struct Ends {
    std::atomic<int> protocol{0};
    std::atomic<int> owner{0};
};

/// Sends back whatever comes, so that both threads are always busy.
std::shared_ptr<Ends> EchoOn(const boost::shared_ptr<Session>& session) {
    const auto ends = std::make_shared<Ends>();
    const boost::weak_ptr<Session> weak = session;
    session->SetProtocolHandlers(
        [weak](const char* bytes, std::size_t size) {
            if (const auto locked = weak.lock()) locked->Send(std::string(bytes, size));
        },
        [ends] { ++ends->protocol; });
    session->SetConnectionClosedHandler([ends] { ++ends->owner; });
    return ends;
}

void EndSomehow(LoopbackPair& pair, unsigned how) {
    switch (how % 6) {
        case 0:
            pair.client->Close();
            break;
        case 1:
            pair.client.reset();
            break;
        case 2:
            pair.clientTransport.reset();
            break;
        case 3:
            pair.server->Close();
            pair.clientTransport.reset();
            break;
        case 4: {
            std::thread other([&] { pair.serverTransport.reset(); });
            pair.clientTransport.reset();
            other.join();
            break;
        }
        case 5: {
            const auto held =
                std::make_shared<boost::shared_ptr<zeltransport::SocketTransport>>(std::move(pair.clientTransport));
            if (!pair.client->RunSoon([held] { held->reset(); })) held->reset();
            pair.server->Close();
            break;
        }
    }
}

TEST(RandomMomentsTest, EveryEndRunsEachClosedHandlerOnceWheneverItComes) {
    std::mt19937 random(20240229);
    for (unsigned i = 0; i < 200; ++i) {
        SCOPED_TRACE(i);
        LoopbackPair pair;
        const auto client = EchoOn(pair.client);
        const auto server = EchoOn(pair.server);
        for (int frame = 0; frame < 3; ++frame) pair.client->Send(std::string(random() % 3000, 'x'));
        const auto moment = std::chrono::steady_clock::now() + std::chrono::microseconds(random() % 500);
        while (std::chrono::steady_clock::now() < moment) continue;
        EndSomehow(pair, i);
        ASSERT_TRUE(WaitFor([&] { return client->owner > 0 && server->owner > 0; }));
        pair.clientTransport.reset();
        pair.serverTransport.reset();
        EXPECT_EQ(1, client->protocol);
        EXPECT_EQ(1, client->owner);
        EXPECT_EQ(1, server->protocol);
        EXPECT_EQ(1, server->owner);
    }
}

}  // namespace
