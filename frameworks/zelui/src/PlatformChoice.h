#pragma once

#include <QByteArray>

namespace zelui {

/// The Qt platform plug-ins to try in their order, separated by ';', the last of which always works; empty where Qt's
/// own choice is right. Never overrides what the environment says itself.
QByteArray ChoosePlatform();

/// Whether the platform's loop can wait for file descriptors.
bool WatchesDescriptors();

}  // namespace zelui
