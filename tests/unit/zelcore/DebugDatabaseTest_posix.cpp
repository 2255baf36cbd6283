#include <gtest/gtest.h>
#include <support/ThrowAwayFolder.h>
#include <sys/stat.h>
#include <zelcore/DebugDatabase.h>

using zelcore::debug::DebugDatabase;

TEST(DebugDatabasePipeTest, PipeInPlaceOfTheFileDoesNotHang) {
    const zeltests::ThrowAwayPreferences preferences;
    ASSERT_EQ(::mkfifo(preferences.GetFolder().Path("DebugDatabase.txt").c_str(), 0600), 0);
    DebugDatabase::Instance().Reload();
    EXPECT_EQ(DebugDatabase::Instance().GetEntry("a", "default"), "default");
}
