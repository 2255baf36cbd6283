#pragma once

#include <cstddef>

#include <zelcore/PlatformHandles.h>

namespace zeltests {

/// Descriptors that this process has open.
std::size_t CountDescriptors();
/// Windows on the display, of whatever program, at any depth.
std::size_t CountWindows();
/// The same inside one window.
std::size_t CountWindowsIn(HWND window);

}  // namespace zeltests
