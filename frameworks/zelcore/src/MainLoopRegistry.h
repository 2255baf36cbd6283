#pragma once

#include <atomic>
#include <deque>
#include <mutex>
#include <thread>

#include <zelcore/MainLoop.h>

namespace zelcore {
namespace threads {

/// Which loop is the process's main loop, which thread is its main thread, and what was posted while there was no loop.
/// Any thread.
class MainLoopRegistry {
public:
    static MainLoopRegistry& Instance();

    MainLoop* GetLoop() const { return mLoop.load(std::memory_order_acquire); }
    bool IsMainThread() const { return mMainThread.load(std::memory_order_relaxed) == std::this_thread::get_id(); }

    /// Installs `loop` on the calling thread and hands over what waits for one; null takes the loop away.
    void SetLoop(MainLoop* loop);
    /// Posts to the loop, or keeps the call until there is one.
    void Post(const MainLoop::Function& function);

private:
    MainLoopRegistry();

    /// Held while posting, so that a loop that was taken away is not used any more when SetLoop returns.
    std::mutex mMutex;
    std::deque<MainLoop::Function> mWaiting;
    std::atomic<MainLoop*> mLoop;
    std::atomic<std::thread::id> mMainThread;
};

}  // namespace threads
}  // namespace zelcore
