// Plug-ins that take their process with them: each in a child, to show that the modules do what their names say and
// that nothing in this process's code softens or hides it.
#include <csignal>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "ChildRun.h"
#include "DescribeForTest.h"
#include "support/WaitFor.h"

using namespace zeltests;
using testing::AnyOf;

namespace {

constexpr int kDescribed = 42;
constexpr int kRefused = 43;

int DescribeInChild(const std::string& name) {
    const bool isVst3 = name.starts_with("vst3/");
    const std::string reason = isVst3 ? ReasonOfVst3(TestPlugin(name)) : ReasonOfVst(TestPlugin(name));
    return reason == "described" ? kDescribed : kRefused;
}

std::string Signal(int number) { return "signal " + std::to_string(number); }

/// Sanitizers turn a crash into an exit of their own.
constexpr char kSanitizerExit[] = "code 1";

}  // namespace

class CrashingPluginTest : public testing::TestWithParam<const char*> {};

TEST_P(CrashingPluginTest, EndsItsProcessByASignal) {
    ChildRun child([] { return DescribeInChild(GetParam()); });
    EXPECT_THAT(child.WaitForEnd(), AnyOf(Signal(SIGSEGV), Signal(SIGABRT), kSanitizerExit));
}

INSTANTIATE_TEST_SUITE_P(All, CrashingPluginTest,
                         testing::Values("vst/bad/crash_on_load.so", "vst/bad/crash_in_entry.so",
                                         "vst/bad/crash_when_described.so", "vst/bad/crash_when_closed.so",
                                         "vst/bad/abort_when_opened.so", "vst3/bad/Crash3.vst3",
                                         "vst3/bad/CrashInit3.vst3"));

class ExitingPluginTest : public testing::TestWithParam<const char*> {};

TEST_P(ExitingPluginTest, EndsItsProcessAsIfAllWereWell) {
    ChildRun child([] { return DescribeInChild(GetParam()); });
    EXPECT_EQ(child.WaitForEnd(), "code 0");
}

INSTANTIATE_TEST_SUITE_P(All, ExitingPluginTest, testing::Values("vst/bad/exit_when_opened.so", "vst3/bad/Exit3.vst3"));

class HangingPluginTest : public testing::TestWithParam<const char*> {};

TEST_P(HangingPluginTest, SleepsAndDoesNotComeBack) {
    ChildRun child([] { return DescribeInChild(GetParam()); });
    EXPECT_TRUE(WaitFor([&child] { return child.IsAsleep(); }));
    EXPECT_EQ(child.GetState(), "runs");
}

INSTANTIATE_TEST_SUITE_P(All, HangingPluginTest, testing::Values("vst/bad/hang_when_opened.so", "vst3/bad/Hang3.vst3"));

class AllocatingPluginTest : public testing::TestWithParam<const char*> {};

TEST_P(AllocatingPluginTest, TakesMoreAndMoreMemory) {
    ChildRun child([] { return DescribeInChild(GetParam()); });
    const std::size_t atStart = child.GetResidentSize();
    EXPECT_TRUE(WaitFor([&] { return child.GetResidentSize() > atStart + (100u << 20); }));
    EXPECT_EQ(child.GetState(), "runs");
}

INSTANTIATE_TEST_SUITE_P(All, AllocatingPluginTest,
                         testing::Values("vst/bad/allocate_when_opened.so", "vst3/bad/Allocate3.vst3"));

TEST(ChildRunTest, AGoodPluginIsDescribedInAChildAsWell) {
    ChildRun child([] { return DescribeInChild("vst/good/zel_gain.so"); });
    EXPECT_EQ(child.WaitForEnd(), "code " + std::to_string(kDescribed));
}
