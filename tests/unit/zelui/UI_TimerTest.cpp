#include <cmath>
#include <limits>

#include <gmock/gmock.h>
#include <zelcore/MainLoop.h>

#include "NodeTools.h"

namespace zeltests {
namespace {

using testing::Each;
using zelcore::threads::MainLoop;
using namespace zelui::ui;

const float kSoon = 0.001f;

/// Lets a timer of another node come `count` times, by which one of the same period would have come as well.
void LetTimePass(std::size_t count) {
    const TestNodePtr clock(new TestNode);
    clock->UI_InstallTimer(0.002f, 1);
    EXPECT_TRUE(ProcessUntil([&] { return clock->ticks.size() >= count; }));
}

TEST(UI_TimerTest, ComesAgainAndAgainWithItsId) {
    const TestNodePtr node(new TestNode);
    node->UI_InstallTimer(kSoon, 42);
    EXPECT_TRUE(ProcessUntil([&] { return node->ticks.size() >= 5; }));
    EXPECT_THAT(node->ticks, Each(42));
}

TEST(UI_TimerTest, EndsWhenItIsTold) {
    const TestNodePtr node(new TestNode);
    node->onTick = [](long) { return false; };
    node->UI_InstallTimer(kSoon, 1);
    EXPECT_TRUE(ProcessUntil([&] { return !node->ticks.empty(); }));
    LetTimePass(10);
    EXPECT_EQ(1u, node->ticks.size());
}

TEST(UI_TimerTest, PeriodsOfNothingAndLessAreAMillisecond) {
    for (const float period : {0.0f, -1.0f, -std::numeric_limits<float>::infinity(), 1e-30f}) {
        const TestNodePtr node(new TestNode);
        node->UI_InstallTimer(period, 1);
        EXPECT_TRUE(ProcessUntil([&] { return node->ticks.size() >= 2; })) << period;
    }
}

TEST(UI_TimerTest, APeriodThatIsNoNumberChangesNothing) {
    const TestNodePtr node(new TestNode);
    const float none = std::numeric_limits<float>::quiet_NaN();
    node->UI_InstallTimer(none, 1);
    node->UI_InstallTimer(kSoon, 2);
    node->UI_InstallTimer(none, 2);
    EXPECT_TRUE(ProcessUntil([&] { return node->ticks.size() >= 3; }));
    EXPECT_THAT(node->ticks, Each(2));
}

TEST(UI_TimerTest, APeriodWithoutEndNeverComes) {
    const TestNodePtr node(new TestNode);
    node->UI_InstallTimer(std::numeric_limits<float>::infinity(), 1);
    node->UI_InstallTimer(1e30f, 2);
    LetTimePass(10);
    EXPECT_TRUE(node->ticks.empty());
}

TEST(UI_TimerTest, TheSameIdAgainTakesThePlaceOfTheFirst) {
    const TestNodePtr node(new TestNode);
    node->UI_InstallTimer(kSoon, 1);
    node->UI_InstallTimer(1000.0f, 1);
    LetTimePass(10);
    EXPECT_TRUE(node->ticks.empty());
}

TEST(UI_TimerTest, IsRemovedInsideItsOwnCall) {
    const TestNodePtr node(new TestNode);
    node->onTick = [&](long id) {
        node->UI_RemoveTimer(id, false);
        return true;
    };
    node->UI_InstallTimer(kSoon, 1);
    EXPECT_TRUE(ProcessUntil([&] { return !node->ticks.empty(); }));
    LetTimePass(10);
    EXPECT_EQ(1u, node->ticks.size());
}

TEST(UI_TimerTest, OneInstalledAnewInsideItsOwnCallGoesOnWhateverTheCallReturns) {
    const TestNodePtr node(new TestNode);
    node->onTick = [&](long id) {
        if (node->ticks.size() == 1) node->UI_InstallTimer(kSoon, id);
        return node->ticks.size() != 1;
    };
    node->UI_InstallTimer(kSoon, 1);
    EXPECT_TRUE(ProcessUntil([&] { return node->ticks.size() >= 3; }));
}

TEST(UI_TimerTest, RemovingOneThatIsNotThereIsHarmless) {
    const TestNodePtr node(new TestNode);
    const TestNodePtr child = MakeNode({}, node);
    node->UI_RemoveTimer(1, false);
    node->UI_InstallTimer(kSoon, 1);
    node->UI_RemoveTimer(2, true);
    EXPECT_TRUE(ProcessUntil([&] { return !node->ticks.empty(); }));
}

TEST(UI_TimerTest, ChildrensTimersGoOnlyWhenTheyAreMeant) {
    const TestNodePtr node(new TestNode);
    const TestNodePtr child = MakeNode({}, node);
    const TestNodePtr grandchild = MakeNode({}, child);
    grandchild->UI_InstallTimer(kSoon, 1);
    grandchild->UI_InstallTimer(kSoon, 2);
    node->UI_RemoveTimer(1, false);
    EXPECT_TRUE(ProcessUntil([&] { return std::count(grandchild->ticks.begin(), grandchild->ticks.end(), 1) > 0; }));
    node->UI_RemoveTimer(1, true);
    grandchild->ticks.clear();
    EXPECT_TRUE(ProcessUntil([&] { return grandchild->ticks.size() >= 10; }));
    EXPECT_THAT(grandchild->ticks, Each(2));
}

TEST(UI_TimerTest, EndsWithItsNode) {
    int ticks = 0;
    TestNodePtr node(new TestNode);
    node->onTick = [&](long) { return ++ticks > 0; };
    node->UI_InstallTimer(kSoon, 1);
    EXPECT_TRUE(ProcessUntil([&] { return ticks > 0; }));
    node.reset();
    const int before = ticks;
    LetTimePass(10);
    EXPECT_EQ(before, ticks);
}

TEST(UI_TimerTest, TheNodeMayGoInsideTheCall) {
    const std::size_t before = UI_NodeManager::Get(false).GetNodeCount();
    TestNodePtr node(new TestNode);
    node->onTick = [&](long) {
        node.reset();
        return false;
    };
    node->UI_InstallTimer(kSoon, 1);
    EXPECT_TRUE(ProcessUntil([&] { return UI_NodeManager::Get(false).GetNodeCount() == before; }));
}

TEST(UI_TimerTest, AnExceptionEndsNothing) {
    const TestNodePtr node(new TestNode);
    node->onTick = [&](long) -> bool { throw std::runtime_error("no"); };
    node->UI_InstallTimer(kSoon, 1);
    EXPECT_TRUE(ProcessUntil([&] { return node->ticks.size() >= 2; }));
}

/// Another main loop for as long as the object lives.
class OtherLoop {
public:
    explicit OtherLoop(MainLoop* loop) : mBefore(MainLoop::GetInstalled()) { MainLoop::Install(loop); }
    ~OtherLoop() { MainLoop::Install(mBefore); }

private:
    MainLoop* const mBefore;
};

TEST(UI_TimerTest, WithoutAMainLoopThereIsNone) {
    const TestNodePtr node(new TestNode);
    {
        const OtherLoop none(nullptr);
        node->UI_InstallTimer(kSoon, 1);
        node->UI_RemoveTimer(1, true);
    }
    LetTimePass(10);
    EXPECT_TRUE(node->ticks.empty());
}

TEST(UI_TimerTest, OneOfALoopThatIsNotInstalledNowEndsWithItsNodeAllTheSame) {
    int ticks = 0;
    TestNodePtr node(new TestNode);
    node->onTick = [&](long) { return ++ticks > 0; };
    node->UI_InstallTimer(kSoon, 1);
    {
        const OtherLoop none(nullptr);
        node.reset();
    }
    LetTimePass(10);
    EXPECT_EQ(0, ticks);
}

/// Counts what is stopped; keeps the function of its one timer until it goes.
class LoopDouble final : public MainLoop {
public:
    int stopped = 0;

    void Post(const Function&) override {}
    Id StartTimer(int, const Function& function) override {
        mFunction = function;
        return 1;
    }
    void StopTimer(Id) override { ++stopped; }
    Id WatchFileDescriptor(int, const Function&) override { return 0; }
    void StopWatching(Id) override {}
    void Run() override {}
    void Quit() override {}

private:
    Function mFunction;
};

TEST(UI_TimerTest, ANodeOfALoopThatIsGoneStopsNothingInTheOneAfterIt) {
    TestNodePtr node(new TestNode);
    alignas(LoopDouble) unsigned char place[sizeof(LoopDouble)];
    {
        LoopDouble* const first = new (place) LoopDouble;
        const OtherLoop installed(first);
        node->UI_InstallTimer(kSoon, 1);
        first->~LoopDouble();
    }
    LoopDouble* const second = new (place) LoopDouble;
    {
        const OtherLoop installed(second);
        const TestNodePtr other(new TestNode);
        other->UI_InstallTimer(kSoon, 1);
        node.reset();
        EXPECT_EQ(0, second->stopped);
    }
    second->~LoopDouble();
}

TEST(UI_TimerTest, UniqueIdsAreUniqueAndNeverNone) {
    UI_NodeManager& manager = UI_NodeManager::Get(true);
    const long first = manager.GetUniqueTimerID();
    const long second = manager.GetUniqueTimerID();
    EXPECT_NE(0, first);
    EXPECT_NE(0, second);
    EXPECT_NE(first, second);
    EXPECT_EQ(&manager, &UI_NodeManager::Get(false));
}

}  // namespace
}  // namespace zeltests
