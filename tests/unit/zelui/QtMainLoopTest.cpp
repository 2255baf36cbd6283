#include <atomic>
#include <chrono>
#include <gtest/gtest.h>
#include <memory>
#include <QCoreApplication>
#include <string>
#include <thread>
#include <vector>

#include <zelcore/MainLoop.h>
#include <zelcore/Threads.h>

#include "support/WaitFor.h"

namespace {

using zelcore::threads::AsyncCallFromMainThread;
using zelcore::threads::MainLoop;

MainLoop& Loop() { return *MainLoop::GetInstalled(); }

bool ProcessUntil(const std::function<bool()>& condition) {
    return zeltests::WaitFor(condition, std::chrono::seconds(20), [] { QCoreApplication::processEvents(); });
}

}  // namespace

TEST(QtMainLoopTest, CallsRunLaterAndInTheOrderOfPosting) {
    std::string order;
    for (char letter = 'a'; letter <= 'e'; ++letter) AsyncCallFromMainThread([&order, letter] { order += letter; });
    EXPECT_EQ(order, "");
    AsyncCallFromMainThread([] { Loop().Quit(); });
    Loop().Run();
    EXPECT_EQ(order, "abcde");
}

TEST(QtMainLoopTest, WhatACallPostsGoesToALaterRound) {
    std::string order;
    AsyncCallFromMainThread([&order] {
        order += 'a';
        AsyncCallFromMainThread([&order] { order += 'c'; });
    });
    AsyncCallFromMainThread([&order] { order += 'b'; });
    QCoreApplication::sendPostedEvents();
    EXPECT_EQ(order, "ab");
    QCoreApplication::sendPostedEvents();
    EXPECT_EQ(order, "abc");
}

TEST(QtMainLoopTest, CallsBehindOneThatRunsALoopRunInThatLoop) {
    std::string order;
    AsyncCallFromMainThread([&order] {
        order += '(';
        Loop().Run();
        order += ')';
        Loop().Quit();
    });
    AsyncCallFromMainThread([&order] { order += 'a'; });
    AsyncCallFromMainThread([&order] {
        order += 'b';
        Loop().Quit();
    });
    Loop().Run();
    EXPECT_EQ(order, "(ab)");
}

TEST(QtMainLoopTest, QuitEndsOnlyTheInnermostRun) {
    std::string order;
    AsyncCallFromMainThread([&order] {
        AsyncCallFromMainThread([] { Loop().Quit(); });
        Loop().Run();
        order += "inner ";
        AsyncCallFromMainThread([] { Loop().Quit(); });
    });
    Loop().Run();
    order += "outer";
    EXPECT_EQ(order, "inner outer");
}

TEST(QtMainLoopTest, QuittingTwiceInOneCallEndsTwoRuns) {
    std::string order;
    AsyncCallFromMainThread([&order] {
        AsyncCallFromMainThread([] {
            Loop().Quit();
            Loop().Quit();
        });
        Loop().Run();
        order += "inner ";
    });
    Loop().Run();
    order += "outer";
    EXPECT_EQ(order, "inner outer");
}

TEST(QtMainLoopTest, QuitHoldsThoughTheCallLetsEventsHappenAfterIt) {
    const auto began = std::chrono::steady_clock::now();
    const MainLoop::Id rescue = Loop().StartTimer(20000, [] { Loop().Quit(); });
    AsyncCallFromMainThread([] {
        Loop().Quit();
        QCoreApplication::processEvents();
    });
    Loop().Run();
    Loop().StopTimer(rescue);
    EXPECT_LT(std::chrono::steady_clock::now() - began, std::chrono::seconds(15)) << "only the rescue ended it";
}

TEST(QtMainLoopTest, QuitWithoutARunIsForgotten) {
    Loop().Quit();
    bool ran = false;
    AsyncCallFromMainThread([&ran] {
        ran = true;
        Loop().Quit();
    });
    Loop().Run();
    EXPECT_TRUE(ran);
}

TEST(QtMainLoopTest, CallsOfManyThreadsAllRunOnTheMainThreadEachThreadsInOrder) {
    const int kThreads = 4;
    const int kCalls = 500;
    std::vector<int> next(kThreads, 0);
    int done = 0;
    bool ordered = true;
    bool onMainThread = true;
    std::vector<std::thread> threads;
    for (int thread = 0; thread < kThreads; ++thread) {
        threads.emplace_back([&, thread] {
            for (int call = 0; call < kCalls; ++call) {
                AsyncCallFromMainThread([&, thread, call] {
                    ordered = ordered && next[static_cast<std::size_t>(thread)]++ == call;
                    onMainThread = onMainThread && zelcore::threads::IsMainThread();
                    if (++done == kThreads * kCalls) Loop().Quit();
                });
            }
        });
    }
    Loop().Run();
    for (std::thread& thread : threads) thread.join();
    EXPECT_EQ(done, kThreads * kCalls);
    EXPECT_TRUE(ordered);
    EXPECT_TRUE(onMainThread);
}

TEST(QtMainLoopTest, ATimerFiresUntilItIsStopped) {
    int fired = 0;
    const MainLoop::Id timer = Loop().StartTimer(1, [&fired] { ++fired; });
    EXPECT_NE(timer, 0u);
    EXPECT_TRUE(ProcessUntil([&fired] { return fired >= 3; }));
    Loop().StopTimer(timer);
    const int before = fired;
    int others = 0;
    const MainLoop::Id other = Loop().StartTimer(1, [&others] { ++others; });
    EXPECT_NE(other, timer);
    EXPECT_TRUE(ProcessUntil([&others] { return others >= 3; }));
    Loop().StopTimer(other);
    EXPECT_EQ(fired, before);
}

TEST(QtMainLoopTest, ATimerMayStopItselfAndItsFunctionIsReleased) {
    const std::shared_ptr<int> fired = std::make_shared<int>(0);
    MainLoop::Id timer = 0;
    timer = Loop().StartTimer(0, [fired, &timer] {
        Loop().StopTimer(timer);
        ++*fired;
        Loop().Quit();
    });
    Loop().Run();
    EXPECT_EQ(*fired, 1);
    EXPECT_EQ(fired.use_count(), 1);
}

TEST(QtMainLoopTest, UnknownTimersAndWatchesAreIgnored) {
    Loop().StopTimer(0);
    Loop().StopTimer(987654);
    Loop().StopWatching(0);
    Loop().StopWatching(987654);
    EXPECT_EQ(Loop().StartTimer(1, MainLoop::Function()), 0u);
    EXPECT_EQ(Loop().WatchFileDescriptor(-1, [] {}), 0u);
}

TEST(QtMainLoopTest, TimersGoOnInsideALoopThatACallRuns) {
    int fired = 0;
    const MainLoop::Id timer = Loop().StartTimer(1, [&fired] {
        if (++fired == 3) Loop().Quit();
    });
    AsyncCallFromMainThread([] {
        Loop().Run();
        Loop().Quit();
    });
    Loop().Run();
    Loop().StopTimer(timer);
    EXPECT_GE(fired, 3);
}
