#pragma once

#include <zelcore/PlatformHandles.h>

#include <zelui/Export.h>

namespace zelui {
namespace ui {

/// What has a window of the platform.
class ZELUI_API UI_Window {
public:
    /// The window's handle, or with `outermost` that of the top-level window that it is in. Makes the window when that
    /// has not happened yet. Null while it is in no window on a real display: offscreen windows have no handle that
    /// anybody else could use.
    virtual HWND GetPlatformWindow(bool outermost) const = 0;

protected:
    virtual ~UI_Window();
};

}  // namespace ui
}  // namespace zelui
