#include "ResourceShortage.h"

#include <windows.h>

namespace zelaudiofilterhost {

namespace {

/// As much as a large plug-in with all of its libraries takes up.
constexpr SIZE_T kEnoughMemory = 256 * 1024 * 1024;

}  // namespace

bool IsShortOfResources() {
    // There is no limit on handles that a process would meet before that on memory.
    void* const memory = VirtualAlloc(nullptr, kEnoughMemory, MEM_RESERVE, PAGE_NOACCESS);
    if (memory == nullptr) return true;
    VirtualFree(memory, 0, MEM_RELEASE);
    return false;
}

}  // namespace zelaudiofilterhost
