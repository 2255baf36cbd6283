#include "ResourceShortage.h"

#include <array>
#include <cstddef>

#include <fcntl.h>
#include <sys/mman.h>
#include <unistd.h>

namespace zelaudiofilterhost {

namespace {

/// As much as a large plug-in with all of its libraries takes up.
constexpr std::size_t kEnoughMemory = 256 * 1024 * 1024;
/// More than loading one takes, and some for itself.
constexpr std::size_t kEnoughDescriptors = 16;

bool AreDescriptorsLeft() {
    std::array<int, kEnoughDescriptors> descriptors;
    for (int& descriptor : descriptors) descriptor = open("/dev/null", O_RDONLY | O_CLOEXEC);
    for (const int descriptor : descriptors)
        if (descriptor >= 0) close(descriptor);
    return descriptors.back() >= 0;
}

}  // namespace

bool IsShortOfResources() {
    if (!AreDescriptorsLeft()) return true;
    void* const memory =
        mmap(nullptr, kEnoughMemory, PROT_READ | PROT_WRITE, MAP_PRIVATE | MAP_ANONYMOUS | MAP_NORESERVE, -1, 0);
    if (memory == MAP_FAILED) return true;
    munmap(memory, kEnoughMemory);
    return false;
}

}  // namespace zelaudiofilterhost
