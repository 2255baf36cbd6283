#pragma once

#include <functional>
#include <string>

namespace zeltests {

/// Runs something in a forked child, for code that may not come back. The child ends without destructors or exit
/// handlers; its chatter is dropped.
class ChildRun {
public:
    /// `body` returns the child's exit code, 0 to 100.
    explicit ChildRun(const std::function<int()>& body);
    /// Kills the child if it still runs.
    ~ChildRun();
    ChildRun(const ChildRun&) = delete;
    ChildRun& operator=(const ChildRun&) = delete;

    /// "code <n>", "signal <n>" or "runs".
    std::string GetState();
    /// Waits until it has ended and returns the state; "runs" when it does not within the usual limit.
    std::string WaitForEnd();
    /// Memory that the child has in use, in bytes; 0 when it has ended.
    std::size_t GetResidentSize() const;
    /// True while the child sleeps in the system.
    bool IsAsleep() const;

private:
    int mProcess;
    std::string mState;
};

}  // namespace zeltests
