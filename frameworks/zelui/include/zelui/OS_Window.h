#pragma once

#include <zelui/UI_SubView.h>
#include <zelui/UI_Window.h>

namespace zelui {
namespace ui {

/// A node with a child window of the platform of its own, for others to draw into. Its children are windows too or
/// ordinary nodes. The window exists from the first time it is asked for or seen until the node leaves the window that
/// it is in, seen or not: what others have put into it must not vanish by scrolling.
///
/// As long as nobody has set its frame it fills its parent and follows its size.
class ZELUI_API OS_Window : public UI_SubView, public UI_Window {
public:
    HWND GetPlatformWindow(bool outermost) const override;

protected:
    OS_Window();
    ~OS_Window() override;

    bool UI_FillsParent() const override;
    std::unique_ptr<Peer> UI_MakePeer() override;
};

}  // namespace ui
}  // namespace zelui
