#pragma once

class QWidget;

namespace tessaly {

enum class WindowKind { kWindow, kDialog };

/// Tells screen readers what a window is, whose class Qt knows nothing of: they follow the user from one window to the
/// next by what these are. Nothing where Qt has no screen readers. Main thread, before the window is shown.
void SetWindowKind(QWidget& window, WindowKind kind);

}  // namespace tessaly
