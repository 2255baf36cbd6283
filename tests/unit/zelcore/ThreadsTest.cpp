#include <atomic>
#include <chrono>
#include <string>
#include <thread>
#include <vector>

#include <gtest/gtest.h>
#include <support/WaitFor.h>
#include <zelcore/SimpleMainLoop.h>
#include <zelcore/Threads.h>

using zelcore::threads::AsyncCallFromMainThread;
using zelcore::threads::IsMainThread;
using zelcore::threads::MainLoop;
using zelcore::threads::SimpleMainLoop;
using zeltests::WaitFor;

TEST(ThreadsTest, OtherThreadsAreNotTheMainThread) {
    EXPECT_TRUE(IsMainThread());
    bool other = true;
    std::thread([&] { other = IsMainThread(); }).join();
    EXPECT_FALSE(other);
}

TEST(ThreadsTest, InstallingMakesTheCallingThreadTheMainThread) {
    bool there = false;
    bool here = true;
    std::thread thread([&] {
        SimpleMainLoop loop;
        there = IsMainThread();
    });
    thread.join();
    here = IsMainThread();
    SimpleMainLoop loop;
    EXPECT_TRUE(there);
    EXPECT_FALSE(here);
    EXPECT_TRUE(IsMainThread());
}

TEST(ThreadsTest, CallsRunLaterOnTheMainThreadAlsoWhenPostedThere) {
    SimpleMainLoop loop;
    std::string order;
    AsyncCallFromMainThread([&] { order += IsMainThread() ? 'a' : 'x'; });
    std::thread([&] { AsyncCallFromMainThread([&] { order += IsMainThread() ? 'b' : 'x'; }); }).join();
    EXPECT_EQ(order, "");
    loop.RunPending();
    EXPECT_EQ(order, "ab");
}

TEST(ThreadsTest, CallsBeforeALoopIsInstalledWaitForItInOrder) {
    ASSERT_EQ(MainLoop::GetInstalled(), nullptr);
    std::string order;
    AsyncCallFromMainThread([&] { order += 'a'; });
    std::thread([&] { AsyncCallFromMainThread([&] { order += 'b'; }); }).join();
    SimpleMainLoop loop;
    AsyncCallFromMainThread([&] { order += 'c'; });
    EXPECT_EQ(order, "");
    loop.RunPending();
    EXPECT_EQ(order, "abc");
}

TEST(ThreadsTest, CallsBetweenTwoLoopsGoToTheNext) {
    int calls = 0;
    { SimpleMainLoop first; }
    AsyncCallFromMainThread([&] { ++calls; });
    SimpleMainLoop second;
    second.RunPending();
    EXPECT_EQ(calls, 1);
}

TEST(ThreadsTest, ThreadsMayPostWhileLoopsComeAndGo) {
    std::atomic<bool> stop{false};
    std::atomic<int> posted{0};
    std::atomic<int> alive{0};
    struct Token {
        explicit Token(std::atomic<int>& it) : count(&it) { ++*count; }
        Token(const Token& other) : count(other.count) { ++*count; }
        ~Token() { --*count; }
        std::atomic<int>* count;
    };
    int calls = 0;
    std::vector<std::thread> threads;
    for (int i = 0; i < 3; ++i)
        threads.emplace_back([&] {
            while (!stop) {
                AsyncCallFromMainThread([&calls, token = Token(alive)] { ++calls; });
                ++posted;
                EXPECT_FALSE(IsMainThread());
                std::this_thread::yield();
            }
        });
    for (int round = 0; round < 50; ++round) {
        SimpleMainLoop loop;
        const int before = calls;
        EXPECT_TRUE(WaitFor([&] { return calls > before; }, std::chrono::seconds(20), [&] { loop.RunPending(); }));
    }
    stop = true;
    for (std::thread& thread : threads) thread.join();
    SimpleMainLoop last;
    last.RunPending();
    EXPECT_GE(calls, 50);
    EXPECT_LE(calls, posted);
    EXPECT_EQ(alive, 0) << "every call was run or dropped";
}
