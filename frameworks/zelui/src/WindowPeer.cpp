#include "WindowPeer.h"

#include <QEvent>
#include <QPlatformSurfaceEvent>
#include <QPointer>
#include <QWidget>
#include <QWindow>

#include "NodeHost.h"

namespace zelui {

class WindowPeer::Watch final : public QObject {
public:
    Watch(ui::UI_Node& node, QWindow& window) : mNode(node), mWindow(&window) { window.installEventFilter(this); }

    bool IsOf(const QWindow* window) const { return mWindow == window; }

private:
    bool eventFilter(QObject*, QEvent* event) override {
        if (event->type() == QEvent::PlatformSurface &&
            static_cast<QPlatformSurfaceEvent*>(event)->surfaceEventType() ==
                QPlatformSurfaceEvent::SurfaceAboutToBeDestroyed)
            NodeHost::TellWindowGoing(mNode);
        return false;
    }

    ui::UI_Node& mNode;
    const QPointer<QWindow> mWindow;
};

WindowPeer::WindowPeer(ui::UI_Node& node) : SubViewPeer(node) {}

WindowPeer::~WindowPeer() = default;

void WindowPeer::WatchWindow() {
    QWindow* const window = GetWidget()->windowHandle();
    if (window == nullptr || (mWatch && mWatch->IsOf(window))) return;
    mWatch = std::make_unique<Watch>(GetNode(), *window);
}

// The widgets round it become native as well: only a window can cut off a window, in a scroll area for instance.
QWidget* WindowPeer::MakeWidget(QWidget& parent) {
    QWidget* const widget = SubViewPeer::MakeWidget(parent);
    widget->setAttribute(Qt::WA_NativeWindow);
    return widget;
}

}  // namespace zelui
