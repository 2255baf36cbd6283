#include "Handles_win32.h"

#include <cstdint>

#include <windows.h>

namespace zeltests {

namespace {

/// Far above what the small programs of the tests have.
constexpr std::uintptr_t kLastHandle = 0x4000;

// The system's own count is not there under wine.
std::size_t Count(DWORD flag) {
    std::size_t count = 0;
    for (std::uintptr_t handle = 4; handle < kLastHandle; handle += 4) {
        DWORD flags = 0;
        if (GetHandleInformation(reinterpret_cast<HANDLE>(handle), &flags) && (flags & flag) == flag) ++count;
    }
    return count;
}

}  // namespace

std::size_t CountHandles() { return Count(0); }

std::size_t CountInheritableHandles() { return Count(HANDLE_FLAG_INHERIT); }

bool IsWine() { return GetProcAddress(GetModuleHandleW(L"ntdll.dll"), "wine_get_version") != nullptr; }

}  // namespace zeltests
