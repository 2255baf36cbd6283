#include <gtest/gtest.h>

#include <zelcore/MainLoop.h>

TEST(QtMainLoopTest, DescriptorsAreNotWatchedHere) {
    EXPECT_EQ(zelcore::threads::MainLoop::GetInstalled()->WatchFileDescriptor(0, [] {}), 0u);
}
