#include "NodeView.h"

#include <boost/intrusive_ptr.hpp>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>
#include <QPointer>

#include "CallOut.h"
#include "KeyboardMapping.h"
#include "NodePeer.h"
#include "QtDrawbot.h"

namespace zelui {

namespace {

/// The node, held; null while it is going.
boost::intrusive_ptr<ui::UI_Node> GetNodeOf(const QWidget& widget) {
    const ui::UI_Node::Peer* const peer = ui::UI_Node::Peer::Of(&widget);
    return peer != nullptr ? &peer->GetNode() : nullptr;
}

int sDrawing = 0;

}  // namespace

NodeView::NodeView(QWidget& parent) : QWidget(&parent) {}

bool NodeView::IsDrawing() { return sDrawing > 0; }

void NodeView::paintEvent(QPaintEvent*) {
    const boost::intrusive_ptr<ui::UI_Node> node = GetNodeOf(*this);
    if (!node) return;
    QPainter painter(this);
    const drawbot::PainterDrawbot drawbot(painter, -ui::UI_Node::Peer::GetDrawOrigin(*node));
    ++sDrawing;
    CallOut("Drawing a view", [&] { node->UI_Draw(drawbot.Get()); });
    --sDrawing;
}

// Qt moves the focus with the Tab key before anybody can have it as a key; a view that has a use for it comes first.
bool NodeView::event(QEvent* event) {
    if (event->type() == QEvent::KeyPress) {
        QKeyEvent& key = static_cast<QKeyEvent&>(*event);
        const bool tab = key.key() == Qt::Key_Tab || key.key() == Qt::Key_Backtab;
        if (tab && (key.modifiers() & (Qt::ControlModifier | Qt::AltModifier)) == 0) return OnTab(key);
    }
    return QWidget::event(event);
}

bool NodeView::OnTab(QKeyEvent& key) {
    const QPointer<NodeView> self(this);
    OnKey(key);
    const bool forward = key.key() == Qt::Key_Tab && (key.modifiers() & Qt::ShiftModifier) == 0;
    // What moves the focus is used up: the widgets round this one would move it once more.
    if (!key.isAccepted() && self && focusNextPrevChild(forward)) key.accept();
    return true;
}

void NodeView::keyPressEvent(QKeyEvent* event) { OnKey(*event); }

void NodeView::keyReleaseEvent(QKeyEvent* event) { OnKey(*event); }

// A key that the node does not want goes on to the widget round this one, and so to the parent node.
void NodeView::OnKey(QKeyEvent& event) {
    const boost::intrusive_ptr<ui::UI_Node> node = GetNodeOf(*this);
    bool used = false;
    if (node) CallOut("A view's keyboard handler", [&] { used = node->UI_DoKeyboardEvent(ToKeyboardEvent(event)); });
    event.setAccepted(used);
}

// The click goes on to the views round this one and to the host. The innermost one has found out who of them takes the
// focus; the others must not take it away again.
void NodeView::mousePressEvent(QMouseEvent* event) {
    event->ignore();
    if (IsOnViewInside(event->position().toPoint())) return;
    CallOut("A view's focus handler", [this] {
        for (boost::intrusive_ptr<ui::UI_Node> node = GetNodeOf(*this); node; node = node->UI_GetParentNode()) {
            if (node->UI_WantsKeyboardFocus() && node->UI_GainKeyboardFocus(ui::kFocusByMouse)) return;
        }
    });
}

bool NodeView::IsOnViewInside(const QPoint& point) const {
    for (const QWidget* widget = childAt(point); widget != nullptr && widget != this; widget = widget->parentWidget()) {
        if (dynamic_cast<const NodeView*>(widget) != nullptr && widget->isEnabled()) return true;
    }
    return false;
}

}  // namespace zelui
