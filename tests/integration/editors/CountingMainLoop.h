#pragma once

#include <cstddef>
#include <set>

#include <zelcore/MainLoop.h>

namespace zeltests {

/// Stands before the installed main loop while it lives, and knows which timers and watches were left in it.
class CountingMainLoop final : public zelcore::threads::MainLoop {
public:
    CountingMainLoop() : mLoop(*GetInstalled()) { Install(this); }
    ~CountingMainLoop() override { Install(&mLoop); }
    CountingMainLoop(const CountingMainLoop&) = delete;
    CountingMainLoop& operator=(const CountingMainLoop&) = delete;

    std::size_t GetCount() const { return mTimers.size() + mWatches.size(); }

    void Post(const Function& function) override { mLoop.Post(function); }
    Id StartTimer(int milliseconds, const Function& function) override {
        return *mTimers.insert(mLoop.StartTimer(milliseconds, function)).first;
    }
    void StopTimer(Id timer) override {
        mTimers.erase(timer);
        mLoop.StopTimer(timer);
    }
    Id WatchFileDescriptor(int descriptor, const Function& onReadable) override {
        return *mWatches.insert(mLoop.WatchFileDescriptor(descriptor, onReadable)).first;
    }
    void StopWatching(Id watch) override {
        mWatches.erase(watch);
        mLoop.StopWatching(watch);
    }
    void Run() override { mLoop.Run(); }
    void Quit() override { mLoop.Quit(); }

private:
    zelcore::threads::MainLoop& mLoop;
    std::set<Id> mTimers;
    std::set<Id> mWatches;
};

}  // namespace zeltests
