#include "NodePeer.h"

#include <QApplication>
#include <QHash>
#include <zelui/QtAccessibility.h>
#include <zelui/QtBridge.h>

#include "PixelEdge.h"
#include "PlainText.h"

namespace zelui {
namespace ui {

namespace {

typedef QHash<const QWidget*, UI_Node::Peer*> Registry;

Registry& GetRegistry() {
    static Registry* const registry = new Registry;
    return *registry;
}

}  // namespace

UI_Node::Peer::Peer(UI_Node& node, Ownership ownership) : mNode(node), mOwnership(ownership) {}

UI_Node::Peer::~Peer() {
    if (mKey != nullptr) GetRegistry().remove(mKey);
    if (!mWidget || mOwnership == kBorrowed) return;
    // Not disconnected: Qt's own accessibility has to hear of the widget's end.
    mWidget->blockSignals(true);
    mWidget->setObjectName(QString());
    mWidget->hide();
    mWidget->deleteLater();
}

void UI_Node::Peer::Realize(QWidget& parent, QWidget* above) {
    if (mWidget) return;
    mWidget = MakeWidget(parent);
    mKey = mWidget;
    GetRegistry().insert(mKey, this);
    if (above != nullptr) mWidget->stackUnder(above);
    Sync();
}

QRect UI_Node::Peer::GetPixelFrame(const UI_Node& node) {
    const zelcore::geom::RectF& frame = node.mFrame;
    if (node.mParent == nullptr) return QRect(0, 0, ToPixelEdge(frame.width), ToPixelEdge(frame.height));
    const int left = ToPixelEdge(frame.left);
    const int top = ToPixelEdge(frame.top);
    return QRect(left, top, ToPixelEdge(frame.Right()) - left, ToPixelEdge(frame.Bottom()) - top);
}

QPointF UI_Node::Peer::GetDrawOrigin(const UI_Node& node) {
    // Of a fractional frame the edges, not the whole of it, were moved to the pixels; the drawing must not move with
    // one.
    if (node.mParent != nullptr) return GetPixelFrame(node).topLeft();
    return QPointF(node.mFrame.left, node.mFrame.top);
}

void UI_Node::Peer::Sync() {
    if (!mWidget) return;
    if (mOwnership == kBorrowed) return OnSync();
    mWidget->setGeometry(GetPixelFrame(mNode));
    mWidget->setEnabled(!mNode.mDisabled);
    OnSync();
    SyncNames();
    if (mWidget) mWidget->setVisible(mNode.mShown);
}

void UI_Node::Peer::SyncNames() {
    const zelcore::utf8string id = mNode.UI_GetID();
    const QString objectName = QString::fromUtf8(id.data(), static_cast<qsizetype>(id.size()));
    if (mWidget->objectName() != objectName) mWidget->setObjectName(objectName);
    const zelcore::ustring setName = mNode.UI_GetAccessibleName();
    const QString name = setName.empty() ? GetOwnAccessibleName() : qt::ToQString(setName);
    if (qt::GetAccessibleName(*mWidget) != name) qt::SetAccessibleName(*mWidget, name);
    const zelcore::ustring setToolTip = mNode.UI_GetToolTip();
    const QString toolTip = setToolTip.empty() ? GetOwnToolTip() : ToToolTip(qt::ToQString(setToolTip));
    if (mWidget->toolTip() != toolTip) mWidget->setToolTip(toolTip);
}

bool UI_Node::Peer::CanBeReleased() const {
    if (!mWidget) return true;
    const QWidget* const busy[] = {QApplication::focusWidget(), QWidget::mouseGrabber(), QWidget::keyboardGrabber(),
                                   mWidget->window()->focusWidget()};
    for (const QWidget* const widget : busy) {
        if (widget != nullptr && (widget == mWidget || mWidget->isAncestorOf(widget))) return false;
    }
    return true;
}

UI_Node::Peer* UI_Node::Peer::Of(const QWidget* widget) { return GetRegistry().value(widget); }

UI_Node::Peer* UI_Node::Peer::Around(const QWidget* widget) {
    for (; widget != nullptr; widget = widget->parentWidget()) {
        if (Peer* const peer = Of(widget)) return peer;
        if (widget->isWindow()) break;
    }
    return nullptr;
}

}  // namespace ui
}  // namespace zelui
