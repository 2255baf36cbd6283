#include "support/WindowType.h"

namespace zeltestplugins {

const char* GetWindowType() { return "HWND"; }

}  // namespace zeltestplugins
