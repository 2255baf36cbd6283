#include "WindowPeer.h"

namespace zelui {

WindowPeer::WindowPeer(ui::UI_Node& node) : SubViewPeer(node) {}

// The widgets round it become native as well: only a window can cut off a window, in a scroll area for instance.
QWidget* WindowPeer::MakeWidget(QWidget& parent) {
    QWidget* const widget = SubViewPeer::MakeWidget(parent);
    widget->setAttribute(Qt::WA_NativeWindow);
    return widget;
}

}  // namespace zelui
