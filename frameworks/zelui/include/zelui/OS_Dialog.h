#pragma once

#include <zelcore/Geometry.h>

#include <zelui/KeyboardEvent.h>
#include <zelui/UI_Dialog.h>
#include <zelui/UI_Window.h>

namespace zelui {
namespace ui {

/// The window side of a dialog that shows nodes: its place on the screen, its size, and its keys before any control
/// gets them. A dialog derives from it and from UI_Dialog. Main thread.
class ZELUI_API OS_Dialog : public UI_Window {
public:
    /// Shows the dialog and returns its response when it has closed.
    virtual UI_Dialog::Response RunModal();

    /// The smallest size that people can give to what is inside the window's frame; one that is smaller now is made as
    /// large at once. What is no number or below 0 counts as 0.
    void SetMinimumSize(const zelcore::geom::PointF& size);
    /// Where the window stands on the desktop and how large it is, its frame included, in display units of the desktop.
    /// It is taken as it is given, also where no screen is; the window system may move it all the same. The size is
    /// the archived one, and the place of no meaning, as long as the dialog was never shown and nothing was set. A
    /// rectangle without area changes nothing. Without it the dialog opens over the middle of its parent the first
    /// time, and where it was closed from then on.
    zelcore::geom::Rect GetGlobalStructureRect() const;
    /// Moves and sizes the window, its frame included, in display units of the desktop.
    void SetGlobalStructureRect(const zelcore::geom::Rect& rect);

    /// The dialog's window, while it is open.
    HWND GetPlatformWindow(bool outermost) const override;

    /// A key, pressed or released, before the control that has the focus gets it; Tab, Return and Escape too. True: the
    /// key is used up. False unless overridden. May close the dialog and let go of it.
    virtual bool UI_DoPreKeyboardEvent(const KeyboardEvent& event);
    /// Called after the size of what is inside the window's frame has changed and the nodes have their new places, with
    /// the root's new frame. Not for the size that it has at first. Overrides call their base's first.
    virtual void UI_SizeChanged(const zelcore::geom::RectF& frame);

protected:
    /// What the window really does; known inside the toolkit.
    class WindowSide;

    /// For UI_Dialog alone.
    OS_Dialog(UI_Dialog& dialog, WindowSide& window);
    ~OS_Dialog() override;

private:
    UI_Dialog& mDialog;
    WindowSide& mWindow;
};

}  // namespace ui
}  // namespace zelui
