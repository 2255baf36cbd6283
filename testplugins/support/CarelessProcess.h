#pragma once

namespace zeltestplugins {

/// Changes what a plug-in can change in the process that it is in, and leaves it so: the folder, the locale, the
/// handlers of signals and exceptions, the floating-point mode, and whatever else the platform has.
void ChangeEverything();

}  // namespace zeltestplugins
