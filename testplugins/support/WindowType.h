#pragma once

namespace zeltestplugins {

/// What VST3 calls the native windows that the editors of this platform can be in.
const char* GetWindowType();

}  // namespace zeltestplugins
