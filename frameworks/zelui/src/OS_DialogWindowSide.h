#pragma once

#include <zelui/OS_Dialog.h>

namespace zelui {
namespace ui {

/// The window of an OS_Dialog, for it alone.
class OS_Dialog::WindowSide {
public:
    /// Whom to tell of keys and sizes; null when it goes.
    void SetDialog(OS_Dialog* dialog) { mDialog = dialog; }

    virtual void SetMinimumSize(const zelcore::geom::PointF& size) = 0;
    virtual zelcore::geom::Rect GetStructureRect() const = 0;
    virtual void SetStructureRect(const zelcore::geom::Rect& rect) = 0;

protected:
    WindowSide() = default;
    ~WindowSide() = default;
    WindowSide(const WindowSide&) = delete;
    WindowSide& operator=(const WindowSide&) = delete;

    OS_Dialog* GetDialog() const { return mDialog; }

private:
    OS_Dialog* mDialog = nullptr;
};

}  // namespace ui
}  // namespace zelui
