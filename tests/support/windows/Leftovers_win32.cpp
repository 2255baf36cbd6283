#include "Leftovers.h"

#include <windows.h>

#include "support/Handles_win32.h"

namespace zeltests {

namespace {

BOOL CALLBACK CountOne(HWND, LPARAM count) {
    ++*reinterpret_cast<std::size_t*>(count);
    return TRUE;
}

BOOL CALLBACK CountWithChildren(HWND window, LPARAM count) {
    *reinterpret_cast<std::size_t*>(count) += 1 + CountWindowsIn(window);
    return TRUE;
}

}  // namespace

std::size_t CountDescriptors() { return CountHandles(); }

std::size_t CountWindows() {
    std::size_t count = 0;
    EnumWindows(CountWithChildren, reinterpret_cast<LPARAM>(&count));
    return count;
}

std::size_t CountWindowsIn(HWND window) {
    // Children of children come along by themselves.
    std::size_t count = 0;
    EnumChildWindows(window, CountOne, reinterpret_cast<LPARAM>(&count));
    return count;
}

}  // namespace zeltests
