#pragma once

#include <memory>

#include <zelcore/MainLoop.h>

namespace zelcore {
namespace threads {

/// A main loop for programs without a user interface. Installs itself when made and takes itself away when it goes.
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
