// Plug-ins that take their process with them: each in a child, to show that the modules do what their names say and
// that nothing in this process's code softens or hides it.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "ChildRun.h"
#include "support/WaitFor.h"

using namespace zeltests;
using testing::AnyOf;

namespace {

/// Sanitizers turn a crash into an exit of their own.
constexpr char kSanitizerExit[] = "code 1";

}  // namespace

class CrashingPluginTest : public testing::TestWithParam<const char*> {};

TEST_P(CrashingPluginTest, EndsItsProcess) {
    ChildRun child(GetParam());
    EXPECT_THAT(child.WaitForEnd(), AnyOf("crashed", kSanitizerExit));
}

TEST(PluginThatCrashesOnLoadTest, EndsItsProcessWhereTheSystemLetsIt) {
    ChildRun child("vst/bad/crash_on_load" ZEL_MODULE);
    EXPECT_THAT(child.WaitForEnd(), AnyOf(std::string(ChildRun::kCrashedLoading), kSanitizerExit));
}

INSTANTIATE_TEST_SUITE_P(All, CrashingPluginTest,
                         testing::Values("vst/bad/crash_in_entry" ZEL_MODULE, "vst/bad/crash_when_described" ZEL_MODULE,
                                         "vst/bad/crash_when_closed" ZEL_MODULE, "vst/bad/abort_when_opened" ZEL_MODULE,
                                         "vst3/bad/Crash3.vst3", "vst3/bad/CrashInit3.vst3"));

class ExitingPluginTest : public testing::TestWithParam<const char*> {};

TEST_P(ExitingPluginTest, EndsItsProcessAsIfAllWereWell) {
    ChildRun child(GetParam());
    EXPECT_EQ(child.WaitForEnd(), "code 0");
}

INSTANTIATE_TEST_SUITE_P(All, ExitingPluginTest,
                         testing::Values("vst/bad/exit_when_opened" ZEL_MODULE, "vst3/bad/Exit3.vst3"));

class HangingPluginTest : public testing::TestWithParam<const char*> {};

TEST_P(HangingPluginTest, SleepsAndDoesNotComeBack) {
    ChildRun child(GetParam());
    EXPECT_TRUE(WaitFor([&child] { return child.IsAsleep(); }));
    EXPECT_EQ(child.GetState(), "runs");
}

INSTANTIATE_TEST_SUITE_P(All, HangingPluginTest,
                         testing::Values("vst/bad/hang_when_opened" ZEL_MODULE, "vst3/bad/Hang3.vst3"));

class AllocatingPluginTest : public testing::TestWithParam<const char*> {};

TEST_P(AllocatingPluginTest, TakesMoreAndMoreMemory) {
    ChildRun child(GetParam());
    const std::size_t atStart = child.GetResidentSize();
    EXPECT_TRUE(WaitFor([&] { return child.GetResidentSize() > atStart + (100u << 20); }));
    EXPECT_EQ(child.GetState(), "runs");
}

INSTANTIATE_TEST_SUITE_P(All, AllocatingPluginTest,
                         testing::Values("vst/bad/allocate_when_opened" ZEL_MODULE, "vst3/bad/Allocate3.vst3"));

TEST(ChildRunTest, AGoodPluginIsDescribedInAChildAsWell) {
    ChildRun child("vst/good/zel_gain" ZEL_MODULE);
    EXPECT_EQ(child.WaitForEnd(), "code " + std::to_string(ChildRun::kDescribed));
}
