#pragma once

#include <zelcore/PlatformHandles.h>

namespace zeltests {

/// No window at all: the editors of these tests draw nothing, or nothing that anybody sees.
inline HWND NoWindow() { return reinterpret_cast<HWND>(1); }

// Keys and modifiers as editors are told of them.
constexpr int kTab = 0x09;
constexpr int kShift = 1;
constexpr int kControl = 2;
constexpr int kAlt = 4;

}  // namespace zeltests
