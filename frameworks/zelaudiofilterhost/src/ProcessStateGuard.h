#pragma once

#include <memory>

namespace zelaudiofilterhost {

/// Puts back, when it goes, what plug-ins are known to change in the process and leave so: the current folder, the
/// locale (a German one makes "0,5" of numbers written to files), the floating-point mode of this thread (libraries
/// built for speed switch denormal numbers off when they are loaded), this thread's signal mask, the handlers of the
/// common signals, and the handlers of the C++ runtime for failed allocations and uncaught exceptions. The handlers
/// matter most: after the plug-in's module is unloaded they would lead nowhere.
///
/// Make it before the plug-in's module is loaded, and let it go after that is unloaded. Main thread.
class ProcessStateGuard {
public:
    ProcessStateGuard();
    ~ProcessStateGuard();
    ProcessStateGuard(const ProcessStateGuard&) = delete;
    ProcessStateGuard& operator=(const ProcessStateGuard&) = delete;

private:
    struct State;
    std::unique_ptr<State> mState;
};

}  // namespace zelaudiofilterhost
