#include <zelcore/SimpleMainLoop.h>

#include <algorithm>
#include <chrono>
#include <cstdint>
#include <deque>
#include <map>
#include <mutex>
#include <vector>

#include "LoopWaiter.h"

namespace zelcore {
namespace threads {

namespace {

typedef std::chrono::steady_clock Clock;

struct Call {
    std::uint64_t number;
    MainLoop::Function function;
};

/// A timer or a watch, shared with the round that calls it, so that it may be stopped by its own function.
struct Source {
    MainLoop::Function function;
    bool stopped = false;
    /// A source whose function runs a nested loop is not called again within itself.
    bool running = false;

    Clock::duration interval{};
    Clock::time_point due{};
    int descriptor = -1;
};

typedef std::shared_ptr<Source> SourcePtr;
typedef std::map<MainLoop::Id, SourcePtr> Sources;

void CallSource(const SourcePtr& source) {
    struct Running {
        explicit Running(Source& it) : source(it) { source.running = true; }
        ~Running() { source.running = false; }
        Source& source;
    } running(*source);
    source->function();
}

void StopSource(Sources& sources, MainLoop::Id id) {
    const Sources::iterator found = sources.find(id);
    if (found == sources.end()) return;
    found->second->stopped = true;
    sources.erase(found);
}

}  // namespace

struct SimpleMainLoop::State {
    LoopWaiter waiter;

    std::mutex mutex;  // guards the two members below, the only ones that other threads reach
    std::deque<Call> calls;
    std::uint64_t lastNumber = 0;

    Sources timers;
    Sources watches;
    Id lastId = 0;
    bool* quitInnermost = nullptr;

    bool TakeCall(std::uint64_t upTo, Function& function);
    void RunCalls(const bool& quit);
    void RunTimers(const bool& quit);
    void RunWatches(std::vector<LoopWaiter::Descriptor>& ready, const std::vector<SourcePtr>& sources,
                    const bool& quit);
    bool IsStillReadable(int descriptor);
    int MillisecondsToWait();
    void RunRound(bool mayWait, const bool& quit);
    void DropCalls();
};

/// Takes the next call out, unless it was posted later than number `upTo`.
bool SimpleMainLoop::State::TakeCall(std::uint64_t upTo, Function& function) {
    const std::lock_guard<std::mutex> lock(mutex);
    if (calls.empty() || calls.front().number > upTo) return false;
    function.swap(calls.front().function);
    calls.pop_front();
    return true;
}

void SimpleMainLoop::State::RunCalls(const bool& quit) {
    std::uint64_t upTo = 0;
    {
        const std::lock_guard<std::mutex> lock(mutex);
        upTo = lastNumber;
    }
    // One at a time from the shared queue: a nested loop goes on with the rest of this round, in order.
    while (!quit) {
        Function function;
        if (!TakeCall(upTo, function)) return;
        if (function) function();
    }
}

void SimpleMainLoop::State::RunTimers(const bool& quit) {
    const Clock::time_point now = Clock::now();
    std::vector<SourcePtr> due;
    for (const Sources::value_type& timer : timers)
        if (timer.second->due <= now && !timer.second->running) due.push_back(timer.second);
    std::stable_sort(due.begin(), due.end(), [](const SourcePtr& a, const SourcePtr& b) { return a->due < b->due; });

    for (const SourcePtr& timer : due) {
        if (quit) return;
        // A nested loop may have stopped it or called it already.
        if (timer->stopped || timer->running || timer->due > now) continue;
        // Late timers do not catch up: a stalled program must not be answered by a burst.
        timer->due += timer->interval;
        if (timer->due <= now) timer->due = now + timer->interval;
        CallSource(timer);
    }
}

/// What ran in this round may have read it; to report it all the same would leave a reader waiting.
bool SimpleMainLoop::State::IsStillReadable(int descriptor) {
    std::vector<LoopWaiter::Descriptor> one{{descriptor, LoopWaiter::kNothing}};
    waiter.Wait(0, one);
    return one.front().seen == LoopWaiter::kReadable;
}

void SimpleMainLoop::State::RunWatches(std::vector<LoopWaiter::Descriptor>& ready,
                                       const std::vector<SourcePtr>& sources, const bool& quit) {
    for (std::size_t i = 0; i < sources.size(); ++i) {
        if (quit) return;
        if (ready[i].seen == LoopWaiter::kReadable && !sources[i]->stopped && !sources[i]->running &&
            IsStillReadable(ready[i].descriptor))
            CallSource(sources[i]);
    }
    // A descriptor that was closed under us would end every wait at once.
    for (std::size_t i = 0; i < sources.size(); ++i) {
        if (ready[i].seen != LoopWaiter::kInvalid) continue;
        for (const Sources::value_type& watch : Sources(watches))
            if (watch.second == sources[i]) StopSource(watches, watch.first);
    }
}

int SimpleMainLoop::State::MillisecondsToWait() {
    {
        const std::lock_guard<std::mutex> lock(mutex);
        if (!calls.empty()) return 0;
    }
    constexpr std::int64_t kLongestMilliseconds = 60 * 60 * 1000;
    std::int64_t wait = -1;
    for (const Sources::value_type& timer : timers) {
        if (timer.second->running) continue;
        const auto left = std::chrono::ceil<std::chrono::milliseconds>(timer.second->due - Clock::now()).count();
        const std::int64_t bounded = std::clamp<std::int64_t>(left, 0, kLongestMilliseconds);
        wait = wait < 0 ? bounded : std::min(wait, bounded);
    }
    return static_cast<int>(wait);
}

void SimpleMainLoop::State::RunRound(bool mayWait, const bool& quit) {
    std::vector<LoopWaiter::Descriptor> descriptors;
    std::vector<SourcePtr> sources;
    for (const Sources::value_type& watch : watches) {
        if (watch.second->running) continue;
        descriptors.push_back({watch.second->descriptor, LoopWaiter::kNothing});
        sources.push_back(watch.second);
    }
    waiter.Wait(mayWait ? MillisecondsToWait() : 0, descriptors);
    RunCalls(quit);
    if (!quit) RunTimers(quit);
    if (!quit) RunWatches(descriptors, sources, quit);
}

/// Destroys what nobody will call. A destructor may post again, hence the loop.
void SimpleMainLoop::State::DropCalls() {
    for (;;) {
        std::deque<Call> dropped;
        {
            const std::lock_guard<std::mutex> lock(mutex);
            dropped.swap(calls);
        }
        if (dropped.empty()) return;
    }
}

SimpleMainLoop::SimpleMainLoop() : mState(std::make_unique<State>()) { Install(this); }

SimpleMainLoop::~SimpleMainLoop() {
    if (GetInstalled() == this) Install(nullptr);
    mState->DropCalls();
}

void SimpleMainLoop::Post(const Function& function) {
    {
        const std::lock_guard<std::mutex> lock(mState->mutex);
        mState->calls.push_back({++mState->lastNumber, function});
    }
    mState->waiter.Wake();
}

MainLoop::Id SimpleMainLoop::StartTimer(int milliseconds, const Function& function) {
    const SourcePtr timer = std::make_shared<Source>();
    timer->function = function;
    timer->interval = std::chrono::milliseconds(std::max(milliseconds, 1));
    timer->due = Clock::now() + timer->interval;
    mState->timers[++mState->lastId] = timer;
    return mState->lastId;
}

void SimpleMainLoop::StopTimer(Id timer) { StopSource(mState->timers, timer); }

MainLoop::Id SimpleMainLoop::WatchFileDescriptor(int descriptor, const Function& onReadable) {
    if (!LoopWaiter::CanWatchDescriptors()) return 0;
    const SourcePtr watch = std::make_shared<Source>();
    watch->function = onReadable;
    watch->descriptor = descriptor;
    mState->watches[++mState->lastId] = watch;
    return mState->lastId;
}

void SimpleMainLoop::StopWatching(Id watch) { StopSource(mState->watches, watch); }

void SimpleMainLoop::Run() {
    bool quit = false;
    struct Innermost {
        Innermost(State& it, bool* flag) : state(it), outer(it.quitInnermost) { state.quitInnermost = flag; }
        ~Innermost() { state.quitInnermost = outer; }
        State& state;
        bool* outer;
    } innermost(*mState, &quit);
    while (!quit) mState->RunRound(true, quit);
}

void SimpleMainLoop::Quit() {
    if (mState->quitInnermost) *mState->quitInnermost = true;
}

void SimpleMainLoop::RunPending() {
    const bool never = false;
    mState->RunRound(false, never);
}

}  // namespace threads
}  // namespace zelcore
