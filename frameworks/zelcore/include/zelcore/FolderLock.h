#pragma once

#include <cstdint>

#include <zelcore/Dir.h>

namespace zelcore {
namespace filesupport {

/// A folder that processes take turns with. Nothing is written into it; the lock goes with the object, or with the
/// process however it ends. It binds only those who ask for it. Not shared between threads.
class ZELCORE_API FolderLock {
public:
    /// A lock of that folder, not yet held.
    explicit FolderLock(const Dir& folder);
    ~FolderLock();
    FolderLock(const FolderLock&) = delete;
    FolderLock& operator=(const FolderLock&) = delete;

    /// Takes the lock if nobody else has it, and tells whether this object has it now. False also for a folder that
    /// cannot be opened.
    bool TryAcquire();
    /// Waits for the lock. False when the folder cannot be opened.
    bool Acquire();

private:
    bool Acquire(bool wait);

    Dir mFolder;
    std::intptr_t mHandle;
};

}  // namespace filesupport
}  // namespace zelcore
