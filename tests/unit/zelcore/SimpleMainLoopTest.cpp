#include <algorithm>
#include <atomic>
#include <chrono>
#include <functional>
#include <memory>
#include <stdexcept>
#include <string>
#include <thread>
#include <vector>

#include <gtest/gtest.h>
#include <support/WaitFor.h>
#include <zelcore/SimpleMainLoop.h>
#include <zelcore/Threads.h>

using zelcore::threads::MainLoop;
using zelcore::threads::SimpleMainLoop;
using zeltests::WaitFor;

namespace {

bool RunUntil(SimpleMainLoop& loop, const std::function<bool()>& condition) {
    return WaitFor(condition, std::chrono::seconds(20), [&] { loop.RunPending(); });
}

}  // namespace

TEST(SimpleMainLoopTest, InstallsItselfAndTakesItselfAway) {
    EXPECT_EQ(MainLoop::GetInstalled(), nullptr);
    {
        SimpleMainLoop loop;
        EXPECT_EQ(MainLoop::GetInstalled(), &loop);
        EXPECT_TRUE(zelcore::threads::IsMainThread());
    }
    EXPECT_EQ(MainLoop::GetInstalled(), nullptr);
}

TEST(SimpleMainLoopTest, LoopThatIsNotTheInstalledOneLeavesTheOther) {
    SimpleMainLoop first;
    {
        SimpleMainLoop second;
        MainLoop::Install(&first);
    }
    EXPECT_EQ(MainLoop::GetInstalled(), &first);
}

TEST(SimpleMainLoopTest, PostedCallsRunInOrderAndNeverAtOnce) {
    SimpleMainLoop loop;
    std::string order;
    for (const char c : {'a', 'b', 'c'}) loop.Post([&order, c] { order += c; });
    EXPECT_EQ(order, "");
    loop.RunPending();
    EXPECT_EQ(order, "abc");
}

TEST(SimpleMainLoopTest, CallPostedByACallWaitsForTheNextRound) {
    SimpleMainLoop loop;
    int calls = 0;
    boost::function<void()> again = [&] {
        ++calls;
        loop.Post(again);
    };
    loop.Post(again);
    loop.RunPending();
    EXPECT_EQ(calls, 1);
    loop.RunPending();
    EXPECT_EQ(calls, 2);
}

TEST(SimpleMainLoopTest, CallsThatPostForeverDoNotStarveTimers) {
    SimpleMainLoop loop;
    boost::function<void()> again = [&] { loop.Post(again); };
    loop.Post(again);
    loop.StartTimer(1, [&] { loop.Quit(); });
    loop.Run();
    EXPECT_EQ(MainLoop::GetInstalled(), &loop);
}

TEST(SimpleMainLoopTest, EmptyFunctionIsIgnored) {
    SimpleMainLoop loop;
    bool called = false;
    loop.Post(MainLoop::Function());
    loop.Post([&] { called = true; });
    loop.RunPending();
    EXPECT_TRUE(called);
}

TEST(SimpleMainLoopTest, QuitEndsTheInnermostRunOnly) {
    SimpleMainLoop loop;
    std::string order;
    loop.Post([&] {
        order += "outer(";
        loop.Post([&] {
            order += "inner";
            loop.Quit();
        });
        loop.Run();
        order += ")";
        loop.Post([&] {
            order += " end";
            loop.Quit();
        });
    });
    loop.Run();
    EXPECT_EQ(order, "outer(inner) end");
}

TEST(SimpleMainLoopTest, NestedRunGoesOnWithTheRoundInOrder) {
    SimpleMainLoop loop;
    std::string order;
    loop.Post([&] {
        loop.Post([&] {
            order += 'c';
            loop.Quit();
        });
        loop.Run();
        order += 'd';
    });
    loop.Post([&] { order += 'a'; });
    loop.Post([&] { order += 'b'; });
    loop.RunPending();
    EXPECT_EQ(order, "abcd");
}

TEST(SimpleMainLoopTest, CallsBehindQuitWaitForTheNextRun) {
    SimpleMainLoop loop;
    bool later = false;
    loop.Post([&] { loop.Quit(); });
    loop.Post([&] { later = true; });
    loop.Run();
    EXPECT_FALSE(later);
    loop.RunPending();
    EXPECT_TRUE(later);
}

TEST(SimpleMainLoopTest, QuitWithoutRunIsForgotten) {
    SimpleMainLoop loop;
    loop.Quit();
    bool called = false;
    loop.Post([&] {
        called = true;
        loop.Quit();
    });
    loop.Run();
    EXPECT_TRUE(called);
}

TEST(SimpleMainLoopTest, WaitingCallsAreDroppedOnTheMainThreadWithoutBeingCalled) {
    struct Guard {
        explicit Guard(std::thread::id& thread) : destroyedOn(thread) {}
        ~Guard() { destroyedOn = std::this_thread::get_id(); }
        std::thread::id& destroyedOn;
    };
    std::thread::id destroyedOn;
    bool called = false;
    {
        SimpleMainLoop loop;
        std::thread poster([&] {
            std::shared_ptr<Guard> guard = std::make_shared<Guard>(destroyedOn);
            loop.Post([&called, moved = std::move(guard)] { called = true; });
        });
        poster.join();
    }
    EXPECT_EQ(destroyedOn, std::this_thread::get_id());
    EXPECT_FALSE(called);
}

TEST(SimpleMainLoopTest, DroppedCallMayPostAgain) {
    struct PostsWhenGone {
        explicit PostsWhenGone(SimpleMainLoop& it) : loop(it) {}
        ~PostsWhenGone() {
            loop.Post([] {});
        }
        SimpleMainLoop& loop;
    };
    {
        SimpleMainLoop loop;
        loop.Post([guard = std::make_shared<PostsWhenGone>(loop)] {});
    }
    EXPECT_EQ(MainLoop::GetInstalled(), nullptr);
}

TEST(SimpleMainLoopTest, OtherThreadsWakeAWaitingLoop) {
    SimpleMainLoop loop;
    std::atomic<bool> running{false};
    loop.Post([&] { running = true; });
    std::thread poster([&] {
        EXPECT_TRUE(WaitFor([&] { return running.load(); }));
        loop.Post([&] { loop.Quit(); });
    });
    loop.Run();
    poster.join();
    EXPECT_TRUE(running);
}

TEST(SimpleMainLoopTest, ThreadsPostWithoutLossAndInTheirOwnOrder) {
    constexpr int kThreads = 4;
    constexpr int kCalls = 5000;
    SimpleMainLoop loop;
    std::vector<int> next(kThreads, 0);
    int outOfOrder = 0;
    int calls = 0;
    std::vector<std::thread> threads;
    for (int thread = 0; thread < kThreads; ++thread)
        threads.emplace_back([&, thread] {
            for (int i = 0; i < kCalls; ++i)
                loop.Post([&, thread, i] {
                    if (next[static_cast<std::size_t>(thread)]++ != i) ++outOfOrder;
                    if (++calls == kThreads * kCalls) loop.Quit();
                });
        });
    loop.Run();
    for (std::thread& thread : threads) thread.join();
    EXPECT_EQ(calls, kThreads * kCalls);
    EXPECT_EQ(outOfOrder, 0);
}

TEST(SimpleMainLoopTest, TimerRepeatsUntilStopped) {
    SimpleMainLoop loop;
    int ticks = 0;
    MainLoop::Id timer = 0;
    timer = loop.StartTimer(1, [&] {
        if (++ticks == 3) loop.StopTimer(timer);
    });
    EXPECT_NE(timer, 0u);
    int witness = 0;
    loop.StartTimer(1, [&] { ++witness; });
    EXPECT_TRUE(RunUntil(loop, [&] { return witness >= 20; }));
    EXPECT_EQ(ticks, 3);
}

TEST(SimpleMainLoopTest, TimerDoesNotFireBeforeItsTime) {
    SimpleMainLoop loop;
    const auto start = std::chrono::steady_clock::now();
    loop.StartTimer(20, [&] { loop.Quit(); });
    loop.Run();
    EXPECT_GE(std::chrono::steady_clock::now() - start, std::chrono::milliseconds(20));
}

TEST(SimpleMainLoopTest, IntervalBelowOneMillisecondCountsAsOne) {
    SimpleMainLoop loop;
    int ticks = 0;
    loop.StartTimer(-5, [&] {
        if (++ticks == 2) loop.Quit();
    });
    loop.Run();
    EXPECT_EQ(ticks, 2);
}

TEST(SimpleMainLoopTest, LateTimerDoesNotCatchUp) {
    typedef std::chrono::steady_clock Clock;
    const std::chrono::milliseconds interval(20);
    SimpleMainLoop loop;
    int ticks = 0;
    loop.StartTimer(20, [&] { ++ticks; });
    const Clock::time_point stalledUntil = Clock::now() + 5 * interval;
    ASSERT_TRUE(WaitFor([&] { return Clock::now() > stalledUntil; }));

    const Clock::time_point start = Clock::now();
    for (int round = 0; round < 5; ++round) loop.RunPending();
    EXPECT_GE(ticks, 1);
    EXPECT_LE(ticks, 1 + (Clock::now() - start) / interval);
}

TEST(SimpleMainLoopTest, TimerStoppedByAnotherOfTheSameRoundIsNotCalled) {
    SimpleMainLoop loop;
    int calls = 0;
    MainLoop::Id first = 0;
    MainLoop::Id second = 0;
    first = loop.StartTimer(1, [&] {
        ++calls;
        loop.StopTimer(first);
        loop.StopTimer(second);
    });
    second = loop.StartTimer(1, [&] {
        ++calls;
        loop.StopTimer(first);
        loop.StopTimer(second);
    });
    int witness = 0;
    loop.StartTimer(1, [&] { ++witness; });
    EXPECT_TRUE(RunUntil(loop, [&] { return witness >= 10; }));
    EXPECT_EQ(calls, 1);
}

TEST(SimpleMainLoopTest, TimerIsNotCalledWithinItself) {
    SimpleMainLoop loop;
    int depth = 0;
    int deepest = 0;
    int rounds = 0;
    const MainLoop::Id timer = loop.StartTimer(1, [&] {
        deepest = std::max(deepest, ++depth);
        int inner = 0;
        const MainLoop::Id other = loop.StartTimer(1, [&] {
            if (++inner == 5) loop.Quit();
        });
        loop.Run();
        loop.StopTimer(other);
        --depth;
        ++rounds;
    });
    EXPECT_TRUE(RunUntil(loop, [&] { return rounds >= 2; }));
    loop.StopTimer(timer);
    EXPECT_EQ(deepest, 1);
}

TEST(SimpleMainLoopTest, UnknownIdsAreIgnored) {
    SimpleMainLoop loop;
    bool called = false;
    const MainLoop::Id timer = loop.StartTimer(1, [&] { called = true; });
    loop.StopTimer(0);
    loop.StopTimer(timer + 1);
    loop.StopWatching(timer);
    EXPECT_TRUE(RunUntil(loop, [&] { return called; }));
    loop.StopTimer(timer);
    loop.StopTimer(timer);
}

TEST(SimpleMainLoopTest, ExceptionLeavesTheLoopUsable) {
    SimpleMainLoop loop;
    std::string order;
    loop.Post([] { throw std::runtime_error("on purpose"); });
    loop.Post([&] {
        order += 'a';
        loop.Quit();
    });
    EXPECT_THROW(loop.Run(), std::runtime_error);
    loop.Run();
    EXPECT_EQ(order, "a");
}
