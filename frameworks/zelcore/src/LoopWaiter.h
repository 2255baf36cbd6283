#pragma once

#include <cstdint>
#include <vector>

namespace zelcore {
namespace threads {

/// The sleep of a main loop: until a time is over, a file descriptor can be read, or another thread wakes it.
class LoopWaiter {
public:
    /// Where the waiter puts what it saw of a descriptor.
    enum Seen { kNothing, kReadable, kInvalid };
    struct Descriptor {
        int descriptor;
        Seen seen;
    };

    /// Whether there are descriptors to wait for on this platform.
    static bool CanWatchDescriptors();

    LoopWaiter();
    ~LoopWaiter();
    LoopWaiter(const LoopWaiter&) = delete;
    LoopWaiter& operator=(const LoopWaiter&) = delete;

    /// Ends the current or the next Wait. Any thread.
    void Wake() noexcept;
    /// Waits at most `milliseconds`; negative means without end. An end of file or an error on a descriptor counts as
    /// readable, so that whoever reads finds out. The thread of the loop.
    void Wait(int milliseconds, std::vector<Descriptor>& descriptors);

private:
    std::intptr_t mReadEnd;
    std::intptr_t mWriteEnd;
};

}  // namespace threads
}  // namespace zelcore
