#include <zelui/OS_Window.h>

#include <zelui/Application.h>
#include <zelui/QtBridge.h>

#include "NodeHost.h"
#include "WindowPeer.h"

namespace zelui {
namespace ui {

OS_Window::OS_Window() = default;

OS_Window::~OS_Window() = default;

bool OS_Window::UI_FillsParent() const { return true; }

std::unique_ptr<UI_Node::Peer> OS_Window::UI_MakePeer() { return std::make_unique<WindowPeer>(*this); }

HWND OS_Window::GetPlatformWindow(bool outermost) const {
    if (!UI_IsInWindow() || !Application::HasDisplay()) return nullptr;
    QWidget* const widget = NodeHost::Of(*this)->RealizeNow(const_cast<OS_Window&>(*this));
    if (widget == nullptr) return nullptr;
    if (outermost) return qt::GetWindowHandle(widget->window());
    const HWND window = qt::GetWindowHandle(widget);
    if (WindowPeer* const peer = dynamic_cast<WindowPeer*>(UI_GetPeer())) peer->WatchWindow();
    return window;
}

}  // namespace ui
}  // namespace zelui
