#include "RunMarker.h"

#include <gtest/gtest.h>

#include "support/ThrowAwayFolder.h"

namespace zeltests {

using tessaly::RunMarker;

/// What is left of a run that ends as it should.
TEST(RunMarkerTest, ARunThatEndsLeavesNothing) {
    const ThrowAwayPreferences preferences;
    {
        RunMarker marker;
        marker.Note("/a.tessaly", true);
    }
    EXPECT_TRUE(RunMarker::TakeLostRuns().empty());
}

TEST(RunMarkerTest, ARunThatGoesOnIsNotLost) {
    const ThrowAwayPreferences preferences;
    RunMarker marker;
    EXPECT_TRUE(RunMarker::TakeLostRuns().empty());
    marker.Note("/a.tessaly", true);
    EXPECT_TRUE(RunMarker::TakeLostRuns().empty());
}

TEST(RunMarkerTest, AMarkWithoutALivingRunIsToldOnce) {
    const ThrowAwayPreferences preferences;
    WriteFile(preferences.GetFolder().Path("Tessaly-4242.run"), "[General]\nsession=/a.tessaly\nmodified=true\n");
    const std::vector<RunMarker::LostRun> lost = RunMarker::TakeLostRuns();
    ASSERT_EQ(lost.size(), 1u);
    EXPECT_EQ(lost[0].sessionPath, "/a.tessaly");
    EXPECT_TRUE(lost[0].wasModified);
    EXPECT_TRUE(RunMarker::TakeLostRuns().empty());
}

TEST(RunMarkerTest, AMarkThatMakesNoSenseIsALostRunWithoutASession) {
    const ThrowAwayPreferences preferences;
    WriteFile(preferences.GetFolder().Path("Tessaly-1.run"), std::string("\x00\xff\x7f garbage", 11));
    WriteFile(preferences.GetFolder().Path("Tessaly-2.run"), std::string(1 << 20, 'x'));
    const std::vector<RunMarker::LostRun> lost = RunMarker::TakeLostRuns();
    ASSERT_EQ(lost.size(), 2u);
    EXPECT_EQ(lost[0].sessionPath, "");
    EXPECT_EQ(lost[1].sessionPath, "");
}

}  // namespace zeltests
