#pragma once

#include <cstddef>
#include <map>
#include <set>
#include <utility>

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
    /// How many timers of that period there are.
    std::size_t CountTimers(int milliseconds) const {
        std::size_t count = 0;
        for (const auto& [timer, period] : mTimers) count += period == milliseconds ? 1 : 0;
        return count;
    }

    /// Called, once, in the middle of whatever is asked of the loop next: what a plug-in that runs the event loop in
    /// the middle of a call lets happen there.
    Function onNextCall;

    void Post(const Function& function) override {
        mLoop.Post(function);
        CallOnce();
    }
    Id StartTimer(int milliseconds, const Function& function) override {
        CallOnce();
        const Id timer = mLoop.StartTimer(milliseconds, function);
        mTimers[timer] = milliseconds;
        return timer;
    }
    void StopTimer(Id timer) override {
        mTimers.erase(timer);
        mLoop.StopTimer(timer);
    }
    Id WatchFileDescriptor(int descriptor, const Function& onReadable) override {
        CallOnce();
        return *mWatches.insert(mLoop.WatchFileDescriptor(descriptor, onReadable)).first;
    }
    void StopWatching(Id watch) override {
        mWatches.erase(watch);
        mLoop.StopWatching(watch);
    }
    void Run() override { mLoop.Run(); }
    void Quit() override { mLoop.Quit(); }

private:
    void CallOnce() {
        const Function function = std::exchange(onNextCall, Function());
        if (function) function();
    }

    zelcore::threads::MainLoop& mLoop;
    std::map<Id, int> mTimers;
    std::set<Id> mWatches;
};

}  // namespace zeltests
