// ZelRunLoop3 tries out the run loop of the context that it is opened with, and tells what came of it by its
// parameters. Its handlers are a part of it and stay registered when it ends.
#include <gtest/gtest.h>
#include <zelcore/SimpleMainLoop.h>

#include "DescribeForTest.h"
#include "support/WaitFor.h"
#include "Vst3FilterForTest.h"

using namespace zelaudiofilterhost;
using namespace zeltests;

namespace {

constexpr int kTrials = 8;
constexpr int kTicks = 9;
constexpr int kReads = 10;
constexpr int kThread = 11;

enum Deed {
    kStartTimer = 1,
    kStartTimerElsewhere,
    kEndTimer,
    kEndTimerElsewhere,
    kStartReader,
    kStartReaderElsewhere,
    kEndReader,
    kEndInside,
    kThrow,
    kManyElsewhere
};

float ValueOf(Deed deed) { return static_cast<float>(deed) / 100.0f; }

class Vst3RunLoopTest : public testing::Test {
protected:
    static boost::intrusive_ptr<AudioFilter> Make() { return MakeVst3("good/ZelRunLoop3"); }
    void Do(Deed deed) { mFilter->SetParameterValue(kTrials, ValueOf(deed)); }
    std::string Tell(int parameter) const { return Text(mFilter->GetParameterValueString(parameter)); }
    int Count(int parameter) const { return std::stoi(Tell(parameter)); }
    bool RunUntilMore(int parameter, int more = 3) {
        const int before = Count(parameter);
        return WaitFor([&] { return Count(parameter) >= before + more; }, std::chrono::seconds(20),
                       [this] { mLoop.RunPending(); });
    }
    /// Lets another filter's timer tick that often, and says how often this parameter went up meanwhile. Both share
    /// the counts: what is more than that other one's is this one's.
    int CountTicksBeside(int ticks) {
        int own = 0;
        const auto timer = mLoop.StartTimer(4, [&own] { ++own; });
        const int before = Count(kTicks);
        EXPECT_TRUE(WaitFor([&] { return own >= ticks; }, std::chrono::seconds(20), [this] { mLoop.RunPending(); }));
        mLoop.StopTimer(timer);
        return Count(kTicks) - before;
    }

    zelcore::threads::SimpleMainLoop mLoop;
    boost::intrusive_ptr<AudioFilter> mFilter = Make();
};

}  // namespace

TEST_F(Vst3RunLoopTest, WhatMakesNoSenseIsRefusedAndTheRestIsCounted) {
    for (int i = 0; i < kTrials; ++i) {
        EXPECT_EQ(mFilter->GetParameterValue(i), 1.0f) << Text(mFilter->GetParameterInfo(i)->GetName());
    }
}

TEST_F(Vst3RunLoopTest, ARunLoopThatIsKeptRefuses) {
    const auto keepsTheModule = mFilter;
    auto second = Make();
    second.reset();
    const auto third = Make();
    EXPECT_EQ(third->GetParameterValue(7), 1.0f);
    EXPECT_EQ(third->GetParameterValue(0), 1.0f);
}

TEST_F(Vst3RunLoopTest, ATimerWithoutAnIntervalLeavesTimeForOthers) {
    Do(kStartTimer);
    bool isPosted = false;
    mLoop.Post([&] { isPosted = true; });
    EXPECT_TRUE(RunUntilMore(kTicks));
    EXPECT_TRUE(isPosted);
    EXPECT_LE(CountTicksBeside(10), 12) << "as fast as a timer of four milliseconds at most";
    Do(kEndTimer);
    EXPECT_EQ(CountTicksBeside(5), 0);
}

TEST_F(Vst3RunLoopTest, ATimerStartedAndEndedOnAnotherThreadTicksOnTheMainThread) {
    Do(kStartTimerElsewhere);
    EXPECT_TRUE(RunUntilMore(kTicks));
    EXPECT_EQ(Tell(kThread), "main");
    Do(kEndTimerElsewhere);
    mLoop.RunPending();
    EXPECT_EQ(CountTicksBeside(5), 0);
}

TEST_F(Vst3RunLoopTest, WhatAnotherThreadStartedIsEndedByTheMainThreadInThatOrder) {
    Do(kStartTimerElsewhere);
    Do(kEndTimer);
    EXPECT_EQ(CountTicksBeside(5), 0);
}

TEST_F(Vst3RunLoopTest, AReaderIsCalledAsLongAsThereIsSomethingToRead) {
    Do(kStartReader);
    EXPECT_TRUE(RunUntilMore(kReads));
    Do(kEndReader);
    const int before = Count(kReads);
    for (int i = 0; i < 5; ++i) mLoop.RunPending();
    EXPECT_EQ(Count(kReads), before);
    Do(kStartReaderElsewhere);
    EXPECT_TRUE(RunUntilMore(kReads));
}

TEST_F(Vst3RunLoopTest, ATimerMayEndItselfInItsTick) {
    Do(kStartTimer);
    Do(kEndInside);
    EXPECT_TRUE(RunUntilMore(kTicks, 1));
    EXPECT_EQ(CountTicksBeside(5), 0);
}

TEST_F(Vst3RunLoopTest, ATimerThatThrowsTicksOn) {
    Do(kStartTimer);
    Do(kThrow);
    EXPECT_TRUE(RunUntilMore(kTicks));
}

TEST_F(Vst3RunLoopTest, TenThousandTimersOfAnotherThreadAreBounded) {
    Do(kManyElsewhere);
    mLoop.RunPending();
    Do(kStartTimer);
    EXPECT_EQ(CountTicksBeside(5), 0) << "there is room for no more";
    Do(kEndTimer);
    Do(kStartTimer);
    EXPECT_TRUE(RunUntilMore(kTicks));
}

TEST_F(Vst3RunLoopTest, WhatIsLeftRegisteredGoesWithTheFilter) {
    Do(kStartTimer);
    Do(kStartReader);
    Do(kManyElsewhere);
    EXPECT_TRUE(RunUntilMore(kTicks));
    // The module stays loaded and tells its counts by the other filter.
    mFilter = Make();
    EXPECT_EQ(CountTicksBeside(5), 0);
    const int before = Count(kReads);
    mLoop.RunPending();
    EXPECT_EQ(Count(kReads), before);
}

TEST_F(Vst3RunLoopTest, WhatIsLeftRegisteredWhenTheModuleIsUnloadedIsNotCalled) {
    Do(kStartTimer);
    Do(kStartReader);
    Do(kStartTimerElsewhere);
    mFilter.reset();
    int ticks = 0;
    mLoop.StartTimer(4, [&ticks] { ++ticks; });
    EXPECT_TRUE(WaitFor([&] { return ticks >= 5; }, std::chrono::seconds(20), [this] { mLoop.RunPending(); }));
}

TEST(Vst3RunLoopWithoutMainLoopTest, NothingIsTakenAndTheLoopMayGoFirst) {
    const auto without = MakeVst3("good/ZelRunLoop3");
    EXPECT_EQ(without->GetParameterValue(0), 1.0f) << "offered";
    EXPECT_EQ(without->GetParameterValue(4), 0.0f) << "but nothing is taken";
    {
        const zelcore::threads::SimpleMainLoop loop;
        without->SetParameterValue(kTrials, ValueOf(kStartTimer));
        without->SetParameterValue(kTrials, ValueOf(kStartReader));
        without->SetParameterValue(kTrials, ValueOf(kStartReaderElsewhere));
    }
    // Another loop must not be told of the first one's sources.
    zelcore::threads::SimpleMainLoop other;
    int ticks = 0;
    other.StartTimer(4, [&ticks] { ++ticks; });
    without->SetParameterValue(kTrials, ValueOf(kEndTimer));
    EXPECT_TRUE(WaitFor([&] { return ticks >= 3; }, std::chrono::seconds(20), [&other] { other.RunPending(); }));
}
