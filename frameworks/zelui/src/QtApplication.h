#pragma once

#include <QApplication>

namespace zelui {

/// Whether there is an application with windows, without which fonts and screens are not to be asked for.
inline bool HasQtApplication() { return qobject_cast<QApplication*>(QCoreApplication::instance()) != nullptr; }

}  // namespace zelui
