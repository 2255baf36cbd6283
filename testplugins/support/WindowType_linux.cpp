#include "support/WindowType.h"

namespace zeltestplugins {

const char* GetWindowType() { return "X11EmbedWindowID"; }

}  // namespace zeltestplugins
