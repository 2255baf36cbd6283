#include <cerrno>
#include <filesystem>

#include <gtest/gtest.h>
#include <support/DiskWaits.h>
#include <support/ThrowAwayFolder.h>
#include <zelcore/FileError.h>
#include <zelcore/FileUtils.h>

using zelcore::filesupport::FileError;
using zelcore::utility::FileUtils;
using zeltests::DiskWaits;

namespace {

class DurableWriteTest : public testing::Test {
protected:
    DurableWriteTest() { zeltests::WriteFile(mFolder.Path("a"), "old"); }

    std::string Read() const { return zeltests::ReadFile(mFolder.Path("a")); }

    const zeltests::ThrowAwayFolder mFolder;
};

}  // namespace

TEST_F(DurableWriteTest, TheWholeContentIsOnTheDiskBeforeItGetsItsName) {
    std::string waitedFor;
    std::string meanwhile;
    const DiskWaits waits([&](int descriptor) {
        waitedFor = zeltests::ReadFile("/proc/self/fd/" + std::to_string(descriptor));
        meanwhile = Read();
        return 0;
    });
    FileUtils::WriteStringToFileDurably(mFolder.UPath("a"), "new");
    EXPECT_EQ(waits.GetCount(), 1);
    EXPECT_EQ(waitedFor, "new");
    EXPECT_EQ(meanwhile, "old");
    EXPECT_EQ(Read(), "new");
}

TEST_F(DurableWriteTest, ADiskThatFailsLeavesTheOldFileAndNothingBeside) {
    const DiskWaits waits([](int) { return EIO; });
    EXPECT_THROW(FileUtils::WriteStringToFileDurably(mFolder.UPath("a"), "new"), FileError);
    EXPECT_EQ(Read(), "old");
    EXPECT_EQ(std::distance(std::filesystem::directory_iterator(mFolder.GetPath()), {}), 1);
}

TEST_F(DurableWriteTest, WhereTheFileSystemCannotWaitItIsWrittenAllTheSame) {
    const DiskWaits waits([](int) { return EINVAL; });
    FileUtils::WriteStringToFileDurably(mFolder.UPath("a"), "new");
    EXPECT_EQ(Read(), "new");
}

TEST_F(DurableWriteTest, WhatIsWrittenOftenDoesNotWait) {
    const DiskWaits waits;
    FileUtils::SimpleWriteStringToFile(mFolder.UPath("a"), "new");
    EXPECT_EQ(waits.GetCount(), 0);
}
