#include "InterruptWatch.h"

#include <csignal>

#include <fcntl.h>
#include <unistd.h>
#include <zelcore/MainLoop.h>

namespace tessaly {

namespace {

int gPipe[2] = {-1, -1};
zelcore::threads::MainLoop::Id gWatch = 0;

extern "C" void OnSignal(int number) {
    // Only what may be done in a signal handler: the rest happens in the main loop.
    const char byte = 0;
    [[maybe_unused]] const ssize_t ignored = write(gPipe[1], &byte, 1);
    std::signal(number, SIG_DFL);
}

void DrainPipe() {
    char bytes[16];
    [[maybe_unused]] const ssize_t ignored = read(gPipe[0], bytes, sizeof bytes);
}

}  // namespace

InterruptWatch::InterruptWatch(const boost::function<void()>& onInterrupt) {
    if (pipe2(gPipe, O_CLOEXEC | O_NONBLOCK) != 0) return;
    gWatch = zelcore::threads::MainLoop::GetInstalled()->WatchFileDescriptor(gPipe[0], [onInterrupt] {
        DrainPipe();
        onInterrupt();
    });
    std::signal(SIGINT, OnSignal);
    std::signal(SIGTERM, OnSignal);
}

InterruptWatch::~InterruptWatch() {
    std::signal(SIGINT, SIG_DFL);
    std::signal(SIGTERM, SIG_DFL);
    if (gWatch) zelcore::threads::MainLoop::GetInstalled()->StopWatching(gWatch);
    gWatch = 0;
    for (int& end : gPipe) {
        if (end >= 0) close(end);
        end = -1;
    }
}

}  // namespace tessaly
