#pragma once

#include <pluginterfaces/base/funknown.h>

#include "Vst3Ptr.h"

namespace zelaudiofilterhost {

/// The main loop as VST3 plug-ins get it: they have their descriptors watched and their timers run by it. Platforms
/// whose plug-ins have a loop of the system's own have no such interface.
///
/// What a plug-in registers is bounded in number. The same handler may be registered several times, which makes a
/// difference only with another descriptor or interval, and goes as a whole. What comes from another thread is handed
/// to the main thread. The plug-in may keep the interface; it is then without effect.
class Vst3RunLoop {
public:
    Vst3RunLoop();
    ~Vst3RunLoop();
    Vst3RunLoop(const Vst3RunLoop&) = delete;
    Vst3RunLoop& operator=(const Vst3RunLoop&) = delete;

    /// Answers a plug-in's question for an interface; false, and nothing is done, when it is not the run loop's. Any
    /// thread.
    bool Query(const Steinberg::TUID id, void** object);
    /// Lets go of all handlers. Whatever is registered later is refused. Main thread.
    void Stop() noexcept;

private:
    class Object;

    Vst3Ptr<Object> mObject;
};

}  // namespace zelaudiofilterhost
