#include <QEvent>
#include <QFocusEvent>
#include <QPointer>
#include <zelui/QtBridge.h>

#include "CallOut.h"
#include "NodeHost.h"
#include "NodePeer.h"
#include "NodeWidgetAccessibility.h"

namespace zelui {
namespace qt {

namespace {

ui::FocusChangeReason ToReason(Qt::FocusReason reason) {
    switch (reason) {
        case Qt::TabFocusReason:
            return ui::kFocusByAdvance;
        case Qt::BacktabFocusReason:
            return ui::kFocusByReverse;
        case Qt::ActiveWindowFocusReason:
            return ui::kFocusByWindow;
        default:
            return ui::kFocusByProgram;
    }
}

}  // namespace

QWidget* GetWidget(const ui::UI_Node& node) {
    const ui::UI_Node::Peer* const peer = node.UI_GetPeer();
    return peer != nullptr ? peer->GetWidget() : nullptr;
}

ui::UI_Node* GetNode(const QWidget* widget) {
    const ui::UI_Node::Peer* const peer = ui::UI_Node::Peer::Around(widget);
    return peer != nullptr ? &peer->GetNode() : nullptr;
}

NodeWidget::NodeWidget(const boost::intrusive_ptr<ui::UI_Node>& root, QWidget* parent) : QWidget(parent) {
    InstallNodeWidgetAccessible();
    setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
    // Where the Tab key comes in. A click goes to the node that was clicked.
    setFocusPolicy(Qt::TabFocus);
    mHost = std::make_unique<NodeHost>(*this);
    mHost->TakeRoot(root);
}

NodeWidget::~NodeWidget() = default;

const boost::intrusive_ptr<ui::UI_Node>& NodeWidget::GetRoot() const { return mHost->GetRoot(); }

QSize NodeWidget::sizeHint() const { return mHost->GetSize(); }

QSize NodeWidget::minimumSizeHint() const { return sizeHint(); }

bool NodeWidget::focusNextPrevChild(bool next) {
    bool moved = false;
    CallOut("Moving the keyboard focus", [&] { moved = mHost->AdvanceFocus(next); });
    return moved;
}

void NodeWidget::focusInEvent(QFocusEvent* event) {
    const Qt::FocusReason reason = event->reason();
    const QPointer<NodeWidget> self(this);
    CallOut("Taking the keyboard focus", [&] {
        const bool forward = reason != Qt::BacktabFocusReason;
        const bool isByTab = !forward || reason == Qt::TabFocusReason;
        // Where nobody stops, the Tab key goes on.
        if (!mHost->EnterFocus(forward, ToReason(reason)) && self && isByTab) mHost->LeaveFocus(forward);
    });
}

bool NodeWidget::event(QEvent* event) {
    // One of the events is the widget's own end.
    const QPointer<NodeWidget> self(this);
    const bool handled = QWidget::event(event);
    // Not while the members are still being made, either.
    if (!self || !mHost) return handled;
    switch (event->type()) {
        case QEvent::Move:
        case QEvent::Resize:
        case QEvent::Show:
        case QEvent::ParentChange:
            mHost->OnSurfaceChanged();
            break;
        case QEvent::ScreenChangeInternal:
#if QT_VERSION >= QT_VERSION_CHECK(6, 6, 0)
        case QEvent::DevicePixelRatioChange:
#endif
            mHost->OnScreenChanged();
            break;
        default:
            break;
    }
    return handled;
}

}  // namespace qt
}  // namespace zelui
