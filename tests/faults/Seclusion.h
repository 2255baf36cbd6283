#pragma once

#include <string>

namespace zelfaults {

/// Takes this process apart from the rest of the machine: the scanner's port and what is mounted are its own. Needs no
/// rights where the system lets users have namespaces.
class Seclusion {
public:
    /// False where the system does not allow it; everything is then as before. Before there are threads.
    static bool Enter();
    /// Mounts a small disk of its own over a folder; it goes with the process.
    static bool MountSmallDisk(const std::string& folder, unsigned long bytes);
};

}  // namespace zelfaults
