#include "MainLoopRegistry.h"

namespace zelcore {
namespace threads {

namespace {

// Until a loop is installed the thread that loads the library counts as the main thread; making the registry here, not
// at its first use, is what finds that thread.
[[maybe_unused]] const MainLoopRegistry& gMadeWhenLoaded = MainLoopRegistry::Instance();

}  // namespace

MainLoopRegistry::MainLoopRegistry() : mLoop(nullptr), mMainThread(std::this_thread::get_id()) {}

MainLoopRegistry& MainLoopRegistry::Instance() {
    // Never freed: threads may post until the very end of the process.
    static MainLoopRegistry* const sInstance = new MainLoopRegistry;
    return *sInstance;
}

void MainLoopRegistry::SetLoop(MainLoop* loop) {
    const std::lock_guard<std::mutex> lock(mMutex);
    mLoop.store(loop, std::memory_order_release);
    if (!loop) return;
    mMainThread.store(std::this_thread::get_id(), std::memory_order_relaxed);
    for (; !mWaiting.empty(); mWaiting.pop_front()) loop->Post(mWaiting.front());
}

void MainLoopRegistry::Post(const MainLoop::Function& function) {
    const std::lock_guard<std::mutex> lock(mMutex);
    if (MainLoop* const loop = GetLoop()) {
        loop->Post(function);
    } else {
        mWaiting.push_back(function);
    }
}

}  // namespace threads
}  // namespace zelcore
