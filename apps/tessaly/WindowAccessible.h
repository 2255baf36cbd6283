#pragma once

#include <QAccessible>

class QWidget;

namespace tessaly {

/// Tells screen readers what a window is, whose class Qt knows nothing of: they follow the user from one window to the
/// next by what these are. Main thread, before the window is shown.
void SetWindowRole(QWidget& window, QAccessible::Role role);

}  // namespace tessaly
