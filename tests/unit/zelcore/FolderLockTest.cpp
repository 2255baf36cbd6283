#include <thread>

#include <gtest/gtest.h>
#include <zelcore/FolderLock.h>
#include <zelcore/Utf.h>

#include "support/ThrowAwayFolder.h"

namespace zeltests {

using zelcore::filesupport::Dir;
using zelcore::filesupport::FolderLock;

TEST(FolderLockTest, OnlyOneHasItAtATime) {
    const ThrowAwayFolder folder;
    FolderLock first(folder.GetDir());
    FolderLock second(folder.GetDir());
    EXPECT_TRUE(first.TryAcquire());
    EXPECT_TRUE(first.TryAcquire());
    EXPECT_FALSE(second.TryAcquire());
}

TEST(FolderLockTest, GoesWithItsObjectAndWhoWaitsGetsItThen) {
    const ThrowAwayFolder folder;
    bool acquired = false;
    std::thread waiting;
    {
        FolderLock first(folder.GetDir());
        ASSERT_TRUE(first.TryAcquire());
        waiting = std::thread([&] {
            FolderLock second(folder.GetDir());
            acquired = second.Acquire();
        });
    }
    waiting.join();
    EXPECT_TRUE(acquired);
}

TEST(FolderLockTest, FolderThatIsNotThereCannotBeHad) {
    FolderLock lock(Dir(zelcore::utility::AsciiToUTF16("/no/such/folder")));
    EXPECT_FALSE(lock.TryAcquire());
    EXPECT_FALSE(lock.Acquire());
}

}  // namespace zeltests
