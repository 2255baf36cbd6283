#include <zeltransport/PeerProcess.h>

#include <gtest/gtest.h>

#include "OwnProcess.h"
#include "RawSocket.h"

namespace {

using zeltests::GetOwnProcessId;
using zeltests::RawSocket;
using zeltransport::LookUpPeer;
using zeltransport::PeerOwner;

TEST(PeerProcessTest, AConnectionWithinThisProcessIsItsOwn) {
    const RawSocket listener = RawSocket::Listen();
    const RawSocket client = RawSocket::Connect(listener.GetPort());
    const RawSocket server = listener.Accept();
    EXPECT_EQ(PeerOwner::kExpected, LookUpPeer(listener.GetPort(), client.GetPort(), GetOwnProcessId()));
    EXPECT_EQ(PeerOwner::kExpected, LookUpPeer(listener.GetPort(), client.GetPort(), 0));
    EXPECT_EQ(PeerOwner::kExpected, LookUpPeer(client.GetPort(), listener.GetPort(), GetOwnProcessId()));
}

TEST(PeerProcessTest, AConnectionThatIsNotThereIsNotYet) {
    const unsigned short port = zeltests::FindFreePort();
    EXPECT_EQ(PeerOwner::kNotYet, LookUpPeer(port, 1, GetOwnProcessId()));
}

TEST(PeerProcessTest, AProcessThatDoesNotExistHoldsNothing) {
    const RawSocket listener = RawSocket::Listen();
    const RawSocket client = RawSocket::Connect(listener.GetPort());
    const RawSocket server = listener.Accept();
    EXPECT_EQ(PeerOwner::kForeign, LookUpPeer(listener.GetPort(), client.GetPort(), 0x7FFFFFFFul));
}

}  // namespace
