#include <gtest/gtest.h>

#include "ApplicationProcess.h"

using zeltests::NothingSet;
using zeltests::RunMode;

TEST(ApplicationTest, WithoutADisplayWindowsAreOffscreen) {
    EXPECT_EQ(RunMode("--report-platform", NothingSet()).printed, "offscreen 0 \n");
}

TEST(ApplicationTest, ADisplayThatCannotBeReachedMeansOffscreenNotTheEnd) {
    QProcessEnvironment environment = NothingSet();
    environment.insert("DISPLAY", ":49151");
    EXPECT_EQ(RunMode("--report-platform", environment).printed, "offscreen 0 \n");
    environment.insert("WAYLAND_DISPLAY", "wayland-there-is-none");
    EXPECT_EQ(RunMode("--report-platform", environment).printed, "offscreen 0 \n");
    environment.remove("DISPLAY");
    EXPECT_EQ(RunMode("--report-platform", environment).printed, "offscreen 0 \n");
}
