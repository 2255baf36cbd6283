#pragma once

#include <memory>

#include <zelcore/MainLoop.h>

namespace zelcore {
namespace threads {

/// A main loop for programs without a user interface. Installs itself when made and takes itself away when it goes.
///
/// It works in rounds: the calls posted before the round began, then the timers that are due, then the descriptors that
/// can be read. What a call posts waits for the next round. A nested Run goes on where the round was; the function of a
/// timer or a watch is not called again within itself. Late timers do not catch up. After Quit nothing more is called
/// in that Run; calls still waiting are for the next one. An exception of a function leaves Run and the loop stays
/// usable.
class ZELCORE_API SimpleMainLoop final : public MainLoop {
public:
    SimpleMainLoop();
    ~SimpleMainLoop() override;
    SimpleMainLoop(const SimpleMainLoop&) = delete;
    SimpleMainLoop& operator=(const SimpleMainLoop&) = delete;

    void Post(const Function& function) override;
    Id StartTimer(int milliseconds, const Function& function) override;
    void StopTimer(Id timer) override;
    Id WatchFileDescriptor(int descriptor, const Function& onReadable) override;
    void StopWatching(Id watch) override;
    void Run() override;
    void Quit() override;

    /// Runs what is due now and returns without waiting. Main thread.
    void RunPending();

private:
    struct State;
    std::unique_ptr<State> mState;
};

}  // namespace threads
}  // namespace zelcore
