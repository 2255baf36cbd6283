// What modules ask of the platform, seen where users see it.
#include <gtest/gtest.h>

#include "DescribeForTest.h"

using namespace zeltests;

TEST(PluginNeedsTest, WhatIsMissingOnThisMachineIsNamed) {
    EXPECT_EQ(ReasonOfVst(TestPlugin("vst/bad/missing_library" ZEL_MODULE)),
              "needs the library libzel-absent.so.1, which is not installed");
    EXPECT_EQ(ReasonOfVst(TestPlugin("vst/bad/missing_function" ZEL_MODULE)),
              "needs the function ZelFunctionThatIsNowhere, which no installed library has");
}

TEST(PluginNeedsTest, AVst3ModuleHasFunctionsToStartAndEndWith) {
    EXPECT_EQ(ReasonOfVst3(TestPlugin("vst3/bad/NoEntry3.vst3")), "has no VST3 entry point (ModuleEntry is missing)");
}
