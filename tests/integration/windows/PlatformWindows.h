#pragma once

#include <memory>

#include <QRect>
#include <zelcore/PlatformHandles.h>

namespace zeltests {

/// The windows of the display, as another program sees them: over a connection of its own.
class PlatformWindows {
public:
    PlatformWindows();
    ~PlatformWindows();
    PlatformWindows(const PlatformWindows&) = delete;
    PlatformWindows& operator=(const PlatformWindows&) = delete;

    bool Exists(HWND window) const;
    /// Whether it and all round it are mapped.
    bool IsViewable(HWND window) const;
    /// Null for a window that does not exist.
    HWND GetParent(HWND window) const;
    /// Place in the parent, and size; empty for a window that does not exist.
    QRect GetFrame(HWND window) const;
    /// What of the window the windows round it, up to `outermost`, leave to be seen; in the coordinates of `outermost`.
    QRect GetSeen(HWND window, HWND outermost) const;

private:
    struct Connection;
    std::unique_ptr<Connection> mConnection;
};

}  // namespace zeltests
