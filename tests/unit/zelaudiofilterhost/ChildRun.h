#pragma once

#include <cstdint>
#include <string>

namespace zeltests {

/// Describes a test plug-in in a process of its own, for plug-ins that do not let it come back. The child ends without
/// destructors or exit handlers; its chatter is dropped.
class ChildRun {
public:
    /// The child's exit code when the plug-in was described, and when it was not.
    static constexpr int kDescribed = 42;
    static constexpr int kRefused = 43;

    /// What becomes of the child when the plug-in crashes while the system loads it, as GetState says it.
    static const char* const kCrashedLoading;

    /// `plugin` is a name as TestPlugin takes it.
    explicit ChildRun(const std::string& plugin);
    /// Kills the child if it still runs.
    ~ChildRun();
    ChildRun(const ChildRun&) = delete;
    ChildRun& operator=(const ChildRun&) = delete;

    /// "code <n>", "crashed" (it touched what is not there, or gave itself up), or "runs".
    std::string GetState();
    /// Waits until it has ended and returns the state; "runs" when it does not within the usual limit.
    std::string WaitForEnd();
    /// Memory that the child has in use, in bytes; 0 when it has ended.
    std::size_t GetResidentSize() const;
    /// True while the child has the plug-in loaded and sleeps.
    bool IsAsleep() const;

private:
    const std::string mPlugin;
    std::intptr_t mProcess;
    std::string mState;
};

}  // namespace zeltests
