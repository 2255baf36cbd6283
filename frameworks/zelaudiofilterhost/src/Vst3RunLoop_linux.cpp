#include <algorithm>
#include <memory>
#include <mutex>
#include <utility>
#include <vector>

#include <boost/function.hpp>
#include <fcntl.h>
#include <pluginterfaces/gui/iplugview.h>
#include <zelcore/MainLoop.h>
#include <zelcore/Threads.h>

#include "PluginCall.h"
#include "Vst3Object.h"
#include "Vst3RunLoop.h"

namespace zelaudiofilterhost {

using Steinberg::FUnknown;
using Steinberg::tresult;
using zelcore::threads::MainLoop;
namespace Linux = Steinberg::Linux;

namespace {

/// Far more than any editor needs.
constexpr std::size_t kMaxRegistrations = 256;
constexpr std::size_t kMaxWaiting = 1024;
/// Faster than any screen. Those who ask for less mean "as often as possible" and would leave time for nobody else.
constexpr Linux::TimerInterval kShortestInterval = 4;
constexpr Linux::TimerInterval kLongestInterval = 24 * 60 * 60 * 1000;

enum Kind { kTimer, kDescriptor };

/// What a handler is called for: an interval in milliseconds, or a descriptor.
struct Cause {
    Kind kind;
    int number;

    bool operator==(const Cause&) const = default;
};

/// A handler that is called, or will be.
struct Registration {
    Vst3Ptr<FUnknown> handler;
    Cause cause;
    boost::function<void()> call;
    MainLoop* loop = nullptr;
    MainLoop::Id source = 0;
    bool isRunning = false;

    Registration(FUnknown* object, const Cause& why, const boost::function<void()>& how)
        : handler(Vst3Ptr<FUnknown>::Share(object)), cause(why), call(how) {}
    ~Registration() { Stop(); }
    Registration(const Registration&) = delete;
    Registration& operator=(const Registration&) = delete;

    void Call() {
        // A handler that lets events happen in the middle of its turn is not called again within it.
        if (isRunning) return;
        isRunning = true;
        CallPluginQuietly([this] { call(); });
        isRunning = false;
    }
    void Stop() {
        const MainLoop::Id stopped = std::exchange(source, 0);
        // Another loop, or none, knows nothing of it.
        if (stopped == 0 || MainLoop::GetInstalled() != loop) return;
        if (cause.kind == kTimer) {
            loop->StopTimer(stopped);
        } else {
            loop->StopWatching(stopped);
        }
    }
};

typedef std::shared_ptr<Registration> RegistrationPtr;

bool Start(const RegistrationPtr& registration) {
    registration->loop = MainLoop::GetInstalled();
    if (registration->loop == nullptr) return false;
    // The loop may outlive the plug-in, and must not hold anything of it.
    const std::weak_ptr<Registration> weak = registration;
    const auto call = [weak] {
        if (const RegistrationPtr called = weak.lock()) called->Call();
    };
    const Cause& cause = registration->cause;
    registration->source = cause.kind == kTimer ? registration->loop->StartTimer(cause.number, call)
                                                : registration->loop->WatchFileDescriptor(cause.number, call);
    return registration->source != 0;
}

bool IsOpen(int descriptor) { return descriptor >= 0 && fcntl(descriptor, F_GETFD) != -1; }

}  // namespace

class Vst3RunLoop::Object final : public Vst3Object<Vst3RunLoop::Object, Linux::IRunLoop> {
public:
    static const Steinberg::TUID& InterfaceId() { return Linux::IRunLoop_iid; }

    tresult PLUGIN_API registerEventHandler(Linux::IEventHandler* handler, Linux::FileDescriptor descriptor) override {
        if (handler == nullptr || !IsOpen(descriptor)) return Steinberg::kInvalidArgument;
        return Add(handler, {kDescriptor, descriptor}, [handler, descriptor] { handler->onFDIsSet(descriptor); });
    }
    tresult PLUGIN_API unregisterEventHandler(Linux::IEventHandler* handler) override {
        return Remove(handler, kDescriptor);
    }
    tresult PLUGIN_API registerTimer(Linux::ITimerHandler* handler, Linux::TimerInterval milliseconds) override {
        if (handler == nullptr) return Steinberg::kInvalidArgument;
        const auto interval = static_cast<int>(std::clamp(milliseconds, kShortestInterval, kLongestInterval));
        return Add(handler, {kTimer, interval}, [handler] { handler->onTimer(); });
    }
    tresult PLUGIN_API unregisterTimer(Linux::ITimerHandler* handler) override { return Remove(handler, kTimer); }

    void Stop() noexcept {
        std::vector<Wish> dropped;
        {
            const std::lock_guard lock(mMutex);
            if (std::exchange(mIsStopped, true)) return;
            dropped.swap(mWaiting);
        }
        // The plug-in's code, which letting go of a handler may run, finds the list empty.
        std::vector<RegistrationPtr> registrations;
        registrations.swap(mRegistrations);
        for (const RegistrationPtr& registration : registrations) registration->Stop();
    }

private:
    /// A call from another thread, on its way.
    struct Wish {
        RegistrationPtr added;  ///< null for one that removes
        FUnknown* handler;      ///< only to compare
        Kind kind;
    };

    tresult Add(FUnknown* handler, const Cause& cause, const boost::function<void()>& call) noexcept {
        bool isAdded = false;
        CallPluginQuietly([&] {
            const auto registration = std::make_shared<Registration>(handler, cause, call);
            isAdded =
                zelcore::threads::IsMainThread() ? AddNow(registration) : Wait({registration, handler, cause.kind});
        });
        return isAdded ? Steinberg::kResultOk : Steinberg::kResultFalse;
    }

    tresult Remove(FUnknown* handler, Kind kind) noexcept {
        bool isRemoved = false;
        CallPluginQuietly([&] {
            isRemoved = zelcore::threads::IsMainThread() ? RemoveNow(handler, kind) : Wait({{}, handler, kind});
        });
        return isRemoved ? Steinberg::kResultOk : Steinberg::kResultFalse;
    }

    bool AddNow(const RegistrationPtr& added) {
        FulfilWishes();
        if (mIsStopped) return false;
        const bool isKnown = std::any_of(mRegistrations.begin(), mRegistrations.end(), [&](const auto& known) {
            return known->handler.Get() == added->handler.Get() && known->cause == added->cause;
        });
        if (isKnown) return true;
        if (mRegistrations.size() >= kMaxRegistrations || !Start(added)) return false;
        mRegistrations.push_back(added);
        return true;
    }

    bool RemoveNow(FUnknown* handler, Kind kind) {
        FulfilWishes();
        std::vector<RegistrationPtr> removed;
        std::erase_if(mRegistrations, [&](const RegistrationPtr& known) {
            const bool isMeant = known->handler.Get() == handler && known->cause.kind == kind;
            if (isMeant) removed.push_back(known);
            return isMeant;
        });
        for (const RegistrationPtr& registration : removed) registration->Stop();
        return !removed.empty();
    }

    bool Wait(Wish wish) {
        const std::lock_guard lock(mMutex);
        if (mIsStopped || mWaiting.size() >= kMaxWaiting) return false;
        addRef();
        const std::shared_ptr<Object> self(this, [](Object* object) { object->release(); });
        zelcore::threads::AsyncCallFromMainThread([self] { self->FulfilWishes(); });
        mWaiting.push_back(std::move(wish));
        return true;
    }

    void FulfilWishes() {
        std::vector<Wish> wishes;
        {
            const std::lock_guard lock(mMutex);
            wishes.swap(mWaiting);
        }
        for (const Wish& wish : wishes) {
            if (wish.added) {
                AddNow(wish.added);
            } else {
                RemoveNow(wish.handler, wish.kind);
            }
        }
    }

    std::vector<RegistrationPtr> mRegistrations;  ///< main thread
    std::mutex mMutex;                            ///< guards what follows
    bool mIsStopped = false;                      ///< changed by the main thread only
    std::vector<Wish> mWaiting;
};

Vst3RunLoop::Vst3RunLoop() : mObject(Vst3Ptr<Object>::Adopt(new Object)) {}

Vst3RunLoop::~Vst3RunLoop() { Stop(); }

bool Vst3RunLoop::Query(const Steinberg::TUID id, void** object) {
    // Asked for its identity, whoever offers the run loop answers with his own.
    return std::equal(id, id + sizeof(Steinberg::TUID), Linux::IRunLoop_iid) &&
           mObject->queryInterface(id, object) == Steinberg::kResultOk;
}

void Vst3RunLoop::Stop() noexcept { mObject->Stop(); }

}  // namespace zelaudiofilterhost
