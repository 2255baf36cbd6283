// What modules ask of the platform, seen where users see it.
#include <windows.h>

#include <gtest/gtest.h>

#include "DescribeForTest.h"

using namespace zeltests;

namespace {

/// wine lets modules be loaded that need a function that is not there, and ends the process when they call it.
bool IsWine() { return GetProcAddress(GetModuleHandleW(L"ntdll.dll"), "wine_get_version") != nullptr; }

}  // namespace

TEST(PluginNeedsTest, ALibraryThatIsMissingOnThisMachineIsNamed) {
    EXPECT_EQ(ReasonOfVst(TestPlugin("vst/bad/missing_library" ZEL_MODULE)),
              "needs the library zel-absent.dll, which is not installed");
}

TEST(PluginNeedsTest, AFunctionThatIsMissingOnThisMachineIsAReason) {
    if (IsWine()) GTEST_SKIP() << "wine loads such modules";
    EXPECT_EQ(ReasonOfVst(TestPlugin("vst/bad/missing_function" ZEL_MODULE)),
              "needs a function that the installed libraries do not have");
}

TEST(PluginNeedsTest, AVst3ModuleNeedsNoFunctionsToStartAndEndWith) {
    EXPECT_EQ(ReasonOfVst3(TestPlugin("vst3/good/ZelBare3.vst3")), "described");
}
