#include <gtest/gtest.h>

#include "ApplicationProcess.h"

using zeltests::NothingSet;
using zeltests::RunMode;

TEST(ApplicationTest, WithNothingSetTheSystemsOwnWindowsAreUsed) {
    EXPECT_EQ(RunMode("--report-platform", NothingSet()).printed, "windows 1 \n");
}
