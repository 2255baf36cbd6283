#pragma once

#include "CommandLine.h"

namespace tessaly {

/// The colours of the program's windows. Main thread, with an application object.
class WindowTheme {
public:
    static void Choose(CommandLine::Theme theme);
};

}  // namespace tessaly
