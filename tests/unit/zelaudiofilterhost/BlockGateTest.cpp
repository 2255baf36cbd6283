#include <atomic>
#include <memory>
#include <thread>

#include <BlockGate.h>
#include <gtest/gtest.h>

#include "support/WaitFor.h"

using namespace zelaudiofilterhost;

TEST(BlockGateTest, ABlockIsTurnedAwayWhileItIsClosed) {
    BlockGate gate;
    EXPECT_TRUE(BlockGate::Block(gate).IsInside());
    {
        const BlockGate::Closed closed(gate);
        EXPECT_TRUE(closed.IsFirst());
        EXPECT_FALSE(BlockGate::Block(gate).IsInside());
    }
    EXPECT_TRUE(BlockGate::Block(gate).IsInside());
}

TEST(BlockGateTest, ClosingFromWithinIsToldAndLeavesItClosed) {
    BlockGate gate;
    const BlockGate::Closed closed(gate);
    EXPECT_FALSE(BlockGate::Closed(gate).IsFirst());
    EXPECT_FALSE(BlockGate::Block(gate).IsInside());
}

TEST(BlockGateTest, ClosingWaitsForTheEndOfTheBlock) {
    BlockGate gate;
    auto block = std::make_unique<BlockGate::Block>(gate);
    std::atomic<bool> isClosed{false};
    std::atomic<bool> wasInside{true};
    std::atomic<bool> isEnding{false};
    std::thread other([&] {
        const BlockGate::Closed closed(gate);
        wasInside = !isEnding;
        isClosed = true;
    });
    EXPECT_FALSE(isClosed);
    isEnding = true;
    block.reset();
    EXPECT_TRUE(zeltests::WaitFor([&] { return isClosed.load(); }));
    other.join();
    EXPECT_FALSE(wasInside);
}

TEST(BlockGateTest, ClosingFromWithinABlockIsToldAndWaitsForNothing) {
    BlockGate gate;
    {
        const BlockGate::Block block(gate);
        EXPECT_FALSE(BlockGate::Closed(gate).IsFirst());
        EXPECT_TRUE(block.IsInside());
    }
    EXPECT_TRUE(BlockGate::Block(gate).IsInside()) << "it was not closed";
    EXPECT_TRUE(BlockGate::Closed(gate).IsFirst());
}

TEST(BlockGateTest, NoBlockBeginsOnceSomebodyWaitsToClose) {
    BlockGate gate;
    auto block = std::make_unique<BlockGate::Block>(gate);
    std::atomic<bool> isClosed{false};
    std::atomic<bool> ends{false};
    std::thread other([&] {
        const BlockGate::Closed closed(gate);
        isClosed = true;
        while (!ends) std::this_thread::yield();
    });
    // Long blocks that follow each other with hardly a gap between them.
    EXPECT_TRUE(zeltests::WaitFor([&] {
        block.reset();
        block = std::make_unique<BlockGate::Block>(gate);
        return isClosed.load();
    }));
    EXPECT_FALSE(block->IsInside());
    ends = true;
    other.join();
}

TEST(BlockGateTest, BlocksAndClosingsNeverOverlap) {
    BlockGate gate;
    int inUse = 0;  // no atomic: the gate is what keeps the threads apart
    std::atomic<bool> ends{false};
    std::atomic<long> blocks{0};
    long overlaps = 0;
    std::thread sound([&] {
        while (!ends) {
            const BlockGate::Block block(gate);
            if (!block.IsInside()) continue;
            if (++inUse != 1) ++overlaps;
            --inUse;
            ++blocks;
        }
    });
    for (int i = 0; i < 2000; ++i) {
        const BlockGate::Closed closed(gate);
        if (++inUse != 1) ++overlaps;
        --inUse;
    }
    EXPECT_TRUE(zeltests::WaitFor([&] { return blocks > 0; }));
    ends = true;
    sound.join();
    EXPECT_EQ(overlaps, 0);
}
