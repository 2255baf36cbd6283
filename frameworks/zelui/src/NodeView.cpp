#include "NodeView.h"

#include <boost/intrusive_ptr.hpp>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>

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

}  // namespace

NodeView::NodeView(QWidget& parent) : QWidget(&parent) {}

void NodeView::paintEvent(QPaintEvent*) {
    const boost::intrusive_ptr<ui::UI_Node> node = GetNodeOf(*this);
    if (!node) return;
    const zelcore::geom::RectF frame = node->UI_GetLocalRectF();
    QPainter painter(this);
    const drawbot::PainterDrawbot drawbot(painter, QPointF(-frame.left, -frame.top));
    CallOut("Drawing a view", [&] { node->UI_Draw(drawbot.Get()); });
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

void NodeView::mousePressEvent(QMouseEvent* event) {
    event->ignore();
    const boost::intrusive_ptr<ui::UI_Node> node = GetNodeOf(*this);
    if (!node || !node->UI_WantsKeyboardFocus()) return;
    CallOut("A view's focus handler", [&] { node->UI_GainKeyboardFocus(ui::kFocusByMouse); });
}

}  // namespace zelui
