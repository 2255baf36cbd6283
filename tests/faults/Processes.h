#pragma once

#include <string>
#include <vector>

#include <sys/types.h>

namespace zelfaults {

/// Looks for processes by what their environment holds: whatever a program started has it too.
class Processes {
public:
    /// Those that have `text` in their environment and are no zombies.
    static std::vector<pid_t> FindWith(const std::string& text);
    /// Those of them whose program's name begins so.
    static std::vector<pid_t> FindWith(const std::string& text, const std::string& name);
    static void Kill(const std::vector<pid_t>& processes);
    static std::string Describe(const std::vector<pid_t>& processes);
};

}  // namespace zelfaults
