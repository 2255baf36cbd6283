#include <chrono>
#include <functional>

#include <fcntl.h>
#include <gtest/gtest.h>
#include <support/WaitFor.h>
#include <unistd.h>
#include <zelcore/SimpleMainLoop.h>

using zelcore::threads::MainLoop;
using zelcore::threads::SimpleMainLoop;
using zeltests::WaitFor;

namespace {

class Pipe {
public:
    Pipe() { EXPECT_EQ(::pipe2(mEnds, O_NONBLOCK | O_CLOEXEC), 0); }
    ~Pipe() {
        CloseReadEnd();
        CloseWriteEnd();
    }
    int GetReadEnd() const { return mEnds[0]; }
    void Write() { EXPECT_EQ(::write(mEnds[1], "x", 1), 1); }
    void Read() {
        char byte = 0;
        EXPECT_EQ(::read(mEnds[0], &byte, 1), 1);
    }
    void CloseReadEnd() { Close(mEnds[0]); }
    void CloseWriteEnd() { Close(mEnds[1]); }

private:
    static void Close(int& end) {
        if (end >= 0) ::close(end);
        end = -1;
    }
    int mEnds[2] = {-1, -1};
};

bool RunUntil(SimpleMainLoop& loop, const std::function<bool()>& condition) {
    return WaitFor(condition, std::chrono::seconds(20), [&] { loop.RunPending(); });
}

}  // namespace

TEST(SimpleMainLoopTest, ReadableDescriptorIsReportedUntilItIsRead) {
    SimpleMainLoop loop;
    Pipe pipe;
    int calls = 0;
    const MainLoop::Id watch = loop.WatchFileDescriptor(pipe.GetReadEnd(), [&] {
        if (++calls == 3) pipe.Read();
    });
    EXPECT_NE(watch, 0u);
    loop.RunPending();
    EXPECT_EQ(calls, 0);
    pipe.Write();
    EXPECT_TRUE(RunUntil(loop, [&] { return calls == 3; }));
    loop.RunPending();
    EXPECT_EQ(calls, 3);
}

TEST(SimpleMainLoopTest, EndOfFileCountsAsReadable) {
    SimpleMainLoop loop;
    Pipe pipe;
    loop.WatchFileDescriptor(pipe.GetReadEnd(), [&] { loop.Quit(); });
    pipe.CloseWriteEnd();
    loop.Run();
    char byte = 0;
    EXPECT_EQ(::read(pipe.GetReadEnd(), &byte, 1), 0);
}

TEST(SimpleMainLoopTest, StoppedWatchIsNotCalledAlsoFromItsOwnFunction) {
    SimpleMainLoop loop;
    Pipe pipe;
    pipe.Write();
    int calls = 0;
    MainLoop::Id watch = 0;
    watch = loop.WatchFileDescriptor(pipe.GetReadEnd(), [&] {
        ++calls;
        loop.StopWatching(watch);
    });
    loop.RunPending();
    loop.RunPending();
    EXPECT_EQ(calls, 1);
}

TEST(SimpleMainLoopTest, TwoWatchesMayShareADescriptor) {
    SimpleMainLoop loop;
    Pipe pipe;
    pipe.Write();
    int first = 0;
    int second = 0;
    const MainLoop::Id watch = loop.WatchFileDescriptor(pipe.GetReadEnd(), [&] { ++first; });
    loop.WatchFileDescriptor(pipe.GetReadEnd(), [&] { ++second; });
    loop.RunPending();
    loop.StopWatching(watch);
    loop.RunPending();
    EXPECT_EQ(first, 1);
    EXPECT_EQ(second, 2);
}

TEST(SimpleMainLoopTest, DescriptorThatSomebodyReadInTheSameRoundIsNotReported) {
    SimpleMainLoop loop;
    Pipe pipe;
    int calls = 0;
    const auto read = [&] {
        ++calls;
        pipe.Read();
    };
    loop.WatchFileDescriptor(pipe.GetReadEnd(), read);
    loop.WatchFileDescriptor(pipe.GetReadEnd(), read);
    pipe.Write();
    loop.RunPending();
    EXPECT_EQ(calls, 1) << "one byte for two watches";
    pipe.Write();
    loop.Post([&] { pipe.Read(); });
    loop.RunPending();
    EXPECT_EQ(calls, 1) << "read by a call before";
}

TEST(SimpleMainLoopTest, DescriptorClosedUnderAWatchIsNotWatchedAnyMore) {
    SimpleMainLoop loop;
    Pipe pipe;
    int calls = 0;
    loop.WatchFileDescriptor(pipe.GetReadEnd(), [&] { ++calls; });
    pipe.CloseReadEnd();
    loop.RunPending();
    Pipe next;  // gets the number of the one that was closed
    next.Write();
    loop.RunPending();
    EXPECT_EQ(calls, 0);
}
