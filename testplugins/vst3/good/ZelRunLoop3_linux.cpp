// An effect without an editor that tries out the run loop in the context that it is opened with. Parameters titled for
// what was tried are 1 when the host stood it. By the parameter "Do" it starts and ends timers and readers, here and on
// another thread, and by the others it tells how often they were called. It ends without a word to the run loop.
#include <climits>
#include <cmath>
#include <stdexcept>
#include <thread>

#include <unistd.h>

#include <pluginterfaces/vst/ivsthostapplication.h>
#include <pluginterfaces/vst/ivstpluginterfacesupport.h>

#include "support/Vst3Plugin.h"

namespace {

using namespace zeltestplugins;

enum Parameter : Vst::ParamID {
    kOffered,
    kRestOfContext,
    kNobody,
    kNoDescriptor,
    kLimit,
    kStranger,
    kTwice,
    kOldLoop,
    kTrials,
    kDo = kTrials,
    kTicks,
    kReads,
    kThread,
    kParameters
};

const std::vector<const char*> kTitles = {"A run loop is offered",
                                          "The context does the rest as well",
                                          "Nobody is refused",
                                          "What is no descriptor is refused",
                                          "Registrations have a limit",
                                          "A stranger is not there to be removed",
                                          "The same twice is once",
                                          "A run loop that is kept refuses",
                                          "Do",
                                          "Ticks",
                                          "Reads",
                                          "Thread"};

enum Deed {
    kNothing,
    kStartTimer,
    kStartTimerElsewhere,
    kEndTimer,
    kEndTimerElsewhere,
    kStartReader,
    kStartReaderElsewhere,
    kEndReader,
    kEndInside,  ///< with the next tick
    kThrow,      ///< in each tick
    kManyElsewhere,
    kDeeds
};

/// Counts references and does not live by them, as many that are a part of something larger.
class Handler : public Linux::ITimerHandler, public Linux::IEventHandler {
public:
    virtual ~Handler() = default;
    tresult PLUGIN_API queryInterface(const TUID, void** object) override {
        *object = nullptr;
        return kNoInterface;
    }
    uint32 PLUGIN_API addRef() override { return ++mReferences; }
    uint32 PLUGIN_API release() override { return --mReferences; }
    void PLUGIN_API onTimer() override {}
    void PLUGIN_API onFDIsSet(Linux::FileDescriptor) override {}
    uint32 GetReferences() const { return mReferences; }

private:
    std::atomic<uint32> mReferences{1};
};

bool TryNobody(Linux::IRunLoop& loop) {
    return loop.registerTimer(nullptr, 10) != kResultOk && loop.registerEventHandler(nullptr, 0) != kResultOk &&
           loop.unregisterTimer(nullptr) != kResultOk && loop.unregisterEventHandler(nullptr) != kResultOk;
}

bool TryNoDescriptor(Linux::IRunLoop& loop) {
    Handler handler;
    int closed[2] = {-1, -1};
    if (pipe(closed) != 0) return false;
    close(closed[0]);
    close(closed[1]);
    for (const int descriptor : {-1, INT_MIN, INT_MAX, closed[0]}) {
        if (loop.registerEventHandler(&handler, descriptor) == kResultOk) return false;
    }
    return handler.GetReferences() == 1;
}

bool TryLimit(Linux::IRunLoop& loop) {
    constexpr int kMany = 10'000;
    Handler handler;
    int taken = 0;
    for (int i = 0; i < kMany; ++i) {
        if (loop.registerTimer(&handler, static_cast<uint64>(1000 + i)) == kResultOk) ++taken;
    }
    const bool isLimited = taken >= 100 && taken < kMany;
    const bool isGone = loop.unregisterTimer(&handler) == kResultOk && handler.GetReferences() == 1;
    const bool hasRoom = loop.registerTimer(&handler, 1) == kResultOk && loop.unregisterTimer(&handler) == kResultOk;
    return isLimited && isGone && hasRoom && handler.GetReferences() == 1;
}

bool TryStranger(Linux::IRunLoop& loop) {
    Handler handler;
    loop.registerTimer(&handler, 10);
    // As a timer it is known, as a reader it is not.
    const bool refused = loop.unregisterEventHandler(&handler) != kResultOk;
    const bool removed = loop.unregisterTimer(&handler) == kResultOk;
    return refused && removed && loop.unregisterTimer(&handler) != kResultOk && handler.GetReferences() == 1;
}

bool TryTwice(Linux::IRunLoop& loop) {
    Handler handler;
    loop.registerTimer(&handler, 10);
    const uint32 once = handler.GetReferences();
    const bool twice = loop.registerTimer(&handler, 10) == kResultOk && handler.GetReferences() == once;
    const bool other = loop.registerTimer(&handler, 20) == kResultOk && handler.GetReferences() > once;
    return loop.unregisterTimer(&handler) == kResultOk && twice && other && handler.GetReferences() == 1;
}

template <typename T>
T* Query(FUnknown* object, const TUID id) {
    void* found = nullptr;
    return object->queryInterface(id, &found) == kResultOk ? static_cast<T*>(found) : nullptr;
}

bool TryRestOfContext(FUnknown* context) {
    Vst::IHostApplication* const application = Query<Vst::IHostApplication>(context, Vst::IHostApplication_iid);
    Vst::IPlugInterfaceSupport* const support =
        Query<Vst::IPlugInterfaceSupport>(context, Vst::IPlugInterfaceSupport_iid);
    FUnknown* const identity = Query<FUnknown>(context, FUnknown_iid);
    Vst::String128 name = {};
    const bool isWhole = application != nullptr && support != nullptr && identity == application &&
                         application->getName(name) == kResultOk && name[0] != 0 &&
                         support->isPlugInterfaceSupported(IPlugView_iid) == kResultTrue &&
                         support->isPlugInterfaceSupported(Linux::IRunLoop_iid) == kResultFalse;
    for (FUnknown* const object : {static_cast<FUnknown*>(application), static_cast<FUnknown*>(support), identity}) {
        if (object != nullptr) object->release();
    }
    return isWhole;
}

/// The run loop of the instance before, kept on purpose until the module goes.
Linux::IRunLoop* gOldLoop = nullptr;
bool gOldHasEnded = false;
/// Of all instances.
int gTicks = 0;
int gReads = 0;

bool TryOld() {
    if (!gOldHasEnded) return true;
    Handler handler;
    const bool refused = gOldLoop->registerTimer(&handler, 10) != kResultOk &&
                         gOldLoop->registerEventHandler(&handler, 0) != kResultOk &&
                         gOldLoop->unregisterTimer(&handler) != kResultOk;
    bool refusedElsewhere = false;
    std::thread([&] { refusedElsewhere = gOldLoop->registerTimer(&handler, 10) != kResultOk; }).join();
    return refused && refusedElsewhere && handler.GetReferences() == 1;
}

void KeepLoop(Linux::IRunLoop* loop) {
    if (loop != nullptr) loop->addRef();
    if (gOldLoop != nullptr) gOldLoop->release();
    gOldLoop = loop;
    gOldHasEnded = false;
}

class Controller : public Vst3Controller {
public:
    explicit Controller(const Vst3Facts& facts) : Vst3Controller(facts) {
        for (std::size_t i = 0; i < mValues.Size(); ++i) mValues[i] = 0.0;
        if (pipe(mPipe) != 0) std::abort();
        const char byte = 'x';
        if (write(mPipe[1], &byte, 1) != 1) std::abort();
    }

    tresult PLUGIN_API initialize(FUnknown* context) override {
        Set(kOldLoop, TryOld());
        Set(kRestOfContext, TryRestOfContext(context));
        mLoop = Query<Linux::IRunLoop>(context, Linux::IRunLoop_iid);
        Set(kOffered, mLoop != nullptr);
        if (mLoop == nullptr) return kResultOk;
        KeepLoop(mLoop);
        Set(kNobody, TryNobody(*mLoop));
        Set(kNoDescriptor, TryNoDescriptor(*mLoop));
        Set(kLimit, TryLimit(*mLoop));
        Set(kStranger, TryStranger(*mLoop));
        Set(kTwice, TryTwice(*mLoop));
        return kResultOk;
    }
    tresult PLUGIN_API terminate() override {
        if (mLoop == gOldLoop) gOldHasEnded = mLoop != nullptr;
        if (mLoop != nullptr) mLoop->release();
        mLoop = nullptr;
        return kResultOk;
    }
    tresult PLUGIN_API setComponentState(IBStream*) override { return kResultOk; }
    tresult PLUGIN_API setParamNormalized(Vst::ParamID id, Vst::ParamValue value) override {
        if (id != kDo) return kResultFalse;
        const auto deed = static_cast<Deed>(static_cast<int>(std::lround(value * 100.0)));
        const auto elsewhere = [this](auto function) { std::thread([&] { function(*mLoop); }).join(); };
        const auto start = [this](Linux::IRunLoop& loop) { loop.registerTimer(&mTimer, 0); };
        const auto end = [this](Linux::IRunLoop& loop) { loop.unregisterTimer(&mTimer); };
        const auto read = [this](Linux::IRunLoop& loop) { loop.registerEventHandler(&mReader, mPipe[0]); };
        if (deed == kStartTimer) start(*mLoop);
        if (deed == kStartTimerElsewhere) elsewhere(start);
        if (deed == kEndTimer) end(*mLoop);
        if (deed == kEndTimerElsewhere) elsewhere(end);
        if (deed == kStartReader) read(*mLoop);
        if (deed == kStartReaderElsewhere) elsewhere(read);
        if (deed == kEndReader) mLoop->unregisterEventHandler(&mReader);
        if (deed == kManyElsewhere) {
            elsewhere([this](Linux::IRunLoop& loop) {
                for (uint64 i = 0; i < 10'000; ++i) loop.registerTimer(&mTimer, 1'000'000 + i);
            });
        }
        mTimer.deed = deed;
        return kResultOk;
    }
    tresult PLUGIN_API getParamStringByValue(Vst::ParamID id, Vst::ParamValue, Vst::String128 text) override {
        const int number = id == kTicks ? gTicks : gReads;
        CopyText(text, 128, id == kThread ? mTimer.thread.c_str() : std::to_string(number).c_str());
        return kResultOk;
    }

private:
    struct Timer final : Handler {
        explicit Timer(Controller& it) : controller(it) {}
        void PLUGIN_API onTimer() override {
            ++gTicks;
            thread = std::this_thread::get_id() == main ? "main" : "another";
            if (deed == kEndInside) controller.mLoop->unregisterTimer(this);
            if (deed == kThrow) throw std::runtime_error("a timer's");
        }
        Controller& controller;
        Deed deed = kNothing;
        std::string thread;
        const std::thread::id main = std::this_thread::get_id();
    };
    struct Reader final : Handler {
        /// Never reads, so that there is always something.
        void PLUGIN_API onFDIsSet(Linux::FileDescriptor) override { ++gReads; }
    };

    ~Controller() override {
        close(mPipe[0]);
        close(mPipe[1]);
    }
    void Set(Parameter trial, bool stood) { mValues[trial] = stood ? 1.0 : 0.0; }

    Linux::IRunLoop* mLoop = nullptr;
    int mPipe[2] = {-1, -1};
    Timer mTimer{*this};
    Reader mReader;
};

class Factory : public Vst3Factory {
public:
    using Vst3Factory::Vst3Factory;

protected:
    Vst::IEditController* MakeController(const Vst3Facts& facts) override { return new Controller(facts); }
};

}  // namespace

ZEL_VST3_MODULE_WITH(true, (KeepLoop(nullptr), true))

ZEL_VST3_FACTORY {
    static Factory factory(
        {{.name = "Zel Run Loop 3", .id = MakeId(70), .parameters = kTitles, .controllerId = MakeId(71)}});
    return &factory;
}
