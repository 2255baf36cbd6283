#include <chrono>
#include <functional>
#include <gtest/gtest.h>
#include <QCoreApplication>
#include <unistd.h>

#include <zelcore/MainLoop.h>
#include <zelcore/Threads.h>

#include "support/WaitFor.h"

namespace {

using zelcore::threads::AsyncCallFromMainThread;
using zelcore::threads::MainLoop;

MainLoop& Loop() { return *MainLoop::GetInstalled(); }

class Pipe {
public:
    Pipe() { EXPECT_EQ(pipe(mEnds), 0); }
    ~Pipe() {
        CloseReader();
        close(mEnds[1]);
    }
    int GetReader() const { return mEnds[0]; }
    void Write() const { EXPECT_EQ(write(mEnds[1], "x", 1), 1); }
    void ReadOne() const {
        char byte = 0;
        EXPECT_EQ(read(mEnds[0], &byte, 1), 1);
    }
    void CloseReader() {
        if (mEnds[0] >= 0) close(mEnds[0]);
        mEnds[0] = -1;
    }

private:
    int mEnds[2] = {-1, -1};
};

bool ProcessUntil(const std::function<bool()>& condition) {
    return zeltests::WaitFor(condition, std::chrono::seconds(20), [] { QCoreApplication::processEvents(); });
}

}  // namespace

TEST(QtMainLoopTest, AWatchedDescriptorTellsWhenItCanBeRead) {
    const Pipe pipe;
    int read = 0;
    const MainLoop::Id watch = Loop().WatchFileDescriptor(pipe.GetReader(), [&] {
        pipe.ReadOne();
        ++read;
        Loop().Quit();
    });
    pipe.Write();
    Loop().Run();
    pipe.Write();
    Loop().Run();
    Loop().StopWatching(watch);
    EXPECT_EQ(read, 2);
}

TEST(QtMainLoopTest, AWatchMayBeStoppedFromItsFunctionAndTheDescriptorClosed) {
    Pipe pipe;
    int called = 0;
    MainLoop::Id watch = 0;
    watch = Loop().WatchFileDescriptor(pipe.GetReader(), [&] {
        ++called;
        Loop().StopWatching(watch);
        pipe.CloseReader();
        AsyncCallFromMainThread([] { Loop().Quit(); });
    });
    pipe.Write();
    Loop().Run();
    EXPECT_EQ(called, 1);
}

TEST(QtMainLoopTest, TwoWatchesOfOneDescriptorAreBothTold) {
    const Pipe pipe;
    int first = 0;
    int second = 0;
    const MainLoop::Id one = Loop().WatchFileDescriptor(pipe.GetReader(), [&first] { ++first; });
    MainLoop::Id other = 0;
    other = Loop().WatchFileDescriptor(pipe.GetReader(), [&] {
        ++second;
        Loop().StopWatching(other);
    });
    pipe.Write();
    EXPECT_TRUE(ProcessUntil([&] { return first >= 3; }));
    Loop().StopWatching(one);
    EXPECT_EQ(second, 1);
}
