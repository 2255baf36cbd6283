#pragma once

#include <cstddef>

namespace zeltests {

/// Looks at the processes of this machine.
class ProcessList {
public:
    /// How many scanner processes there are, dead ones that nobody has taken notice of included.
    static std::size_t CountScanners();
    /// Takes notice of this process's scanners that end by themselves, and waits for those that have not yet.
    static void WaitForScanners();
    /// Ends those of this process that have been given up and are not gone yet.
    static void EndScanners();
    /// How the platform names a crash by touching memory that is not there.
    static const char* GetCrashName();
};

}  // namespace zeltests
