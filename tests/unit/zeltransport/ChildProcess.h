#pragma once

#include <functional>

#include <sys/types.h>

namespace zeltests {

/// A forked copy of this process that runs a function and ends; killed with the object. The function runs beside
/// threads that are frozen for ever: it may use the system's calls, and nothing that takes a lock.
class ChildProcess {
public:
    explicit ChildProcess(const std::function<void()>& function);
    ~ChildProcess();
    ChildProcess(const ChildProcess&) = delete;
    ChildProcess& operator=(const ChildProcess&) = delete;

    unsigned long GetId() const { return static_cast<unsigned long>(mProcess); }

private:
    pid_t mProcess;
};

}  // namespace zeltests
