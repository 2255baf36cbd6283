#pragma once

#include <zelcore/PlatformHandles.h>

namespace tessaly {

/// The plug-in manager, with its place and order kept between runs. Main thread, with an application object.
class PluginManagerWindow {
public:
    /// Runs the dialog over `parent` (may be null). When the changes cannot be saved or taken back the user is told and
    /// may go on with them. False when they gave up, and what was not saved is lost.
    static bool Run(HWND parent);
};

}  // namespace tessaly
