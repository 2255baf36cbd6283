#pragma once

#include <QIcon>
#include <QPalette>

namespace tessaly {

enum class TransportSign { kPlay, kStop, kRewind };

/// A sign for a button, in the colours of the theme: those of the style do not follow it.
QIcon MakeTransportIcon(TransportSign sign, const QPalette& palette);

}  // namespace tessaly
