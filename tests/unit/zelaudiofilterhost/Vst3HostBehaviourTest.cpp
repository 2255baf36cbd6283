// What a plug-in finds when it tries out the streams, lists, handlers and calls that it gets: ZelCurious3 tells by its
// parameters, each titled for what was tried, which of it the host stood.
#include <gtest/gtest.h>

#include "DescribeForTest.h"
#include "Vst3FilterForTest.h"

using namespace zelaudiofilterhost;
using namespace zeltests;

namespace {

constexpr int kTriedWhenMade = 5;
constexpr int kTrials = 9;

void ExpectStood(const AudioFilter& filter, int first, int end) {
    for (int i = first; i < end; ++i) {
        EXPECT_EQ(filter.GetParameterValue(i), 1.0f) << Text(filter.GetParameterInfo(i)->GetName());
    }
}

}  // namespace

TEST(Vst3HostBehaviourTest, StatesTravelInAStreamThatStaysInItsBounds) {
    const auto filter = MakeVst3("good/ZelCurious3");
    ASSERT_EQ(filter->GetParameterCount(), kTrials);
    ExpectStood(*filter, 0, kTriedWhenMade);
}

TEST(Vst3HostBehaviourTest, AHandlerThatIsKeptAfterItsFiltersEndIsHarmless) {
    // Each calls the one before: the first one's filter is gone by then.
    auto first = MakeVst3("good/ZelCurious3");
    const auto keepsTheModule = MakeVst3("good/ZelCurious3");
    first.reset();
    auto second = MakeVst3("good/ZelCurious3");
    second.reset();
    ExpectStood(*MakeVst3("good/ZelCurious3"), 0, kTriedWhenMade);
}

TEST(Vst3HostBehaviourTest, ProcessingIsStartedInOrderAndItsListsHaveBounds) {
    const auto filter = MakeVst3("good/ZelCurious3");
    for (int round = 0; round < 3; ++round) {
        ASSERT_TRUE(filter->StartProcessing(44100, 8));
        // Only blocks tell; the buses are spoilt each time.
        filter->SetParameterValue(0, 1.0f);
        for (int block = 0; block < 3; ++block) EXPECT_EQ(ProcessOnes(*filter), 1.0f);
        ExpectStood(*filter, 0, kTrials);
        filter->StopProcessing();
    }
    // A start without a stop before it.
    ASSERT_TRUE(filter->StartProcessing(48000, 8));
    ASSERT_TRUE(filter->StartProcessing(96000, 16));
    EXPECT_EQ(ProcessOnes(*filter, 16), 1.0f);
    ExpectStood(*filter, 0, kTrials);
}
