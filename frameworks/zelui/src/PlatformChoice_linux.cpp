#include "PlatformChoice.h"

#include <qglobal.h>

namespace zelui {

// Qt ends the process when no platform of the list can be started, so the list ends with the one that needs nothing.
// Under Wayland plug-in editors still need X windows to live in: X comes first.
QByteArray ChoosePlatform() {
    if (!qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM")) return QByteArray();
    if (!qEnvironmentVariableIsEmpty("DISPLAY")) return "xcb;offscreen";
    if (!qEnvironmentVariableIsEmpty("WAYLAND_DISPLAY")) return "wayland;offscreen";
    return "offscreen";
}

bool WatchesDescriptors() { return true; }

}  // namespace zelui
