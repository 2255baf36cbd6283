#include "InterruptWatch.h"

#include <mutex>

#include <boost/make_shared.hpp>
#include <boost/weak_ptr.hpp>
#include <windows.h>
#include <zelcore/Threads.h>

namespace tessaly {

namespace {

/// In milliseconds: less than what the system gives a program whose console is closed.
constexpr DWORD kClosingTime = 4000;

struct Watch {
    boost::function<void()> onInterrupt;
    bool isTold = false;
    /// Set when nobody waits for interrupts any more.
    HANDLE isOver = CreateEventW(nullptr, TRUE, FALSE, nullptr);

    Watch() = default;
    ~Watch() { CloseHandle(isOver); }
    Watch(const Watch&) = delete;
    Watch& operator=(const Watch&) = delete;
};

std::mutex gMutex;
boost::shared_ptr<Watch> gWatch;

/// Takes the first request; the watch that it was for.
boost::shared_ptr<Watch> Take() {
    const std::lock_guard<std::mutex> lock(gMutex);
    if (!gWatch || gWatch->isTold) return nullptr;
    gWatch->isTold = true;
    return gWatch;
}

BOOL WINAPI OnControl(DWORD request) {
    // On a thread of the system's own.
    const boost::shared_ptr<Watch> watch = Take();
    if (!watch) return FALSE;
    zelcore::threads::AsyncCallFromMainThread([weak = boost::weak_ptr<Watch>(watch)] {
        const boost::shared_ptr<Watch> told = weak.lock();
        if (told && WaitForSingleObject(told->isOver, 0) != WAIT_OBJECT_0) told->onInterrupt();
    });
    // The program ends as soon as a request other than the interrupts has been answered.
    if (request != CTRL_C_EVENT && request != CTRL_BREAK_EVENT) WaitForSingleObject(watch->isOver, kClosingTime);
    return TRUE;
}

}  // namespace

InterruptWatch::InterruptWatch(const boost::function<void()>& onInterrupt) {
    const boost::shared_ptr<Watch> watch = boost::make_shared<Watch>();
    watch->onInterrupt = onInterrupt;
    {
        const std::lock_guard<std::mutex> lock(gMutex);
        gWatch = watch;
    }
    SetConsoleCtrlHandler(OnControl, TRUE);
}

InterruptWatch::~InterruptWatch() {
    SetConsoleCtrlHandler(OnControl, FALSE);
    boost::shared_ptr<Watch> watch;
    {
        const std::lock_guard<std::mutex> lock(gMutex);
        watch.swap(gWatch);
    }
    SetEvent(watch->isOver);
}

}  // namespace tessaly
