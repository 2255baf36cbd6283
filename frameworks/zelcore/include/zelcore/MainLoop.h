#pragma once

#include <boost/function.hpp>

#include <zelcore/Export.h>

namespace zelcore {
namespace threads {

/// The loop of the main thread, through which layers without a user interface post calls, keep timers and watch file
/// descriptors. The user interface library implements it, programs without one use SimpleMainLoop.
class ZELCORE_API MainLoop {
public:
    /// What the loop calls.
    typedef boost::function<void()> Function;
    /// Names a timer or a watch of one loop; 0 is none.
    typedef unsigned long Id;

    /// Runs `function` on the main thread, later, in the order of posting. Any thread. What is still waiting when the
    /// loop goes is dropped without being called, on the main thread. Implementations only put the call into a queue:
    /// AsyncCallFromMainThread and Install hold a lock of their own meanwhile.
    virtual void Post(const Function& function) = 0;

    /// Calls `function` every `milliseconds` (at least 1) until StopTimer. Main thread.
    virtual Id StartTimer(int milliseconds, const Function& function) = 0;
    /// Stops the timer; its function is not called again. Unknown ids are ignored. Main thread, also from the function.
    virtual void StopTimer(Id timer) = 0;

    /// Calls `onReadable` whenever the descriptor can be read, until StopWatching; not on Windows (returns 0). The
    /// descriptor stays the caller's. Main thread.
    virtual Id WatchFileDescriptor(int descriptor, const Function& onReadable) = 0;
    /// Stops the watch; its function is not called again. Unknown ids are ignored. Main thread.
    virtual void StopWatching(Id watch) = 0;

    /// Runs the loop until Quit. May be nested. Main thread.
    virtual void Run() = 0;
    /// Ends the innermost Run. Main thread.
    virtual void Quit() = 0;

    /// The installed loop, or null.
    static MainLoop* GetInstalled();
    /// Makes `loop` the process's main loop and the calling thread its main thread; calls posted before are handed to
    /// it. Null takes the loop away again. The loop stays the caller's and must be taken away before it goes.
    static void Install(MainLoop* loop);

protected:
    virtual ~MainLoop();
};

}  // namespace threads
}  // namespace zelcore
