#pragma once

namespace tessaly {

/// While one lives, what is written to the standard output goes to the error stream instead: plug-ins that are loaded
/// in this process print what they like, and the output is for programs.
class OutputGuard {
public:
    OutputGuard();
    ~OutputGuard();
    OutputGuard(const OutputGuard&) = delete;
    OutputGuard& operator=(const OutputGuard&) = delete;

private:
    int mOutput;
};

}  // namespace tessaly
