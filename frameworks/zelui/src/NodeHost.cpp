#include "NodeHost.h"

#include <algorithm>
#include <QCoreApplication>
#include <QEvent>
#include <QScopedValueRollback>
#include <QScrollArea>
#include <stdexcept>
#include <zelui/QtAccessibility.h>
#include <zelui/Theme.h>
#include <zelui/UI_Container.h>

#include "CallOut.h"
#include "FocusStops.h"
#include "NodePeer.h"
#include "NodeView.h"
#include "OwnTabOrder.h"
#include "ThemeChanges.h"

namespace zelui {

using ui::UI_Container;
using ui::UI_Node;

namespace {

const QEvent::Type kUpdateEvent = static_cast<QEvent::Type>(QEvent::registerEventType());

QRectF ToQRectF(const zelcore::geom::RectF& rect) { return QRectF(rect.left, rect.top, rect.width, rect.height); }

Qt::FocusReason ToQtReason(ui::FocusChangeReason reason) {
    switch (reason) {
        case ui::kFocusByMouse:
            return Qt::MouseFocusReason;
        case ui::kFocusByAdvance:
            return Qt::TabFocusReason;
        case ui::kFocusByReverse:
            return Qt::BacktabFocusReason;
        case ui::kFocusByWindow:
            return Qt::ActiveWindowFocusReason;
        case ui::kFocusByProgram:
        case ui::kFocusLeftOver:
            break;
    }
    return Qt::OtherFocusReason;
}

ui::FocusChangeReason GetReason(bool forward) { return forward ? ui::kFocusByAdvance : ui::kFocusByReverse; }

void ScrollIntoView(QWidget& widget) {
    for (QWidget* parent = widget.parentWidget(); parent != nullptr; parent = parent->parentWidget()) {
        if (QScrollArea* const area = qobject_cast<QScrollArea*>(parent)) area->ensureWidgetVisible(&widget);
    }
}

const boost::intrusive_ptr<UI_Node>& CheckRoot(const boost::intrusive_ptr<UI_Node>& root) {
    if (root && root->UI_GetParentNode() == nullptr) return root;
    throw std::invalid_argument("NodeHost: the root of a tree is needed");
}

/// A member that is true for a while in which its owner may go.
class RaisedFlag {
public:
    RaisedFlag(QObject& owner, bool& flag) : mOwner(&owner), mFlag(flag) { mFlag = true; }
    ~RaisedFlag() {
        if (mOwner) mFlag = false;
    }
    RaisedFlag(const RaisedFlag&) = delete;
    RaisedFlag& operator=(const RaisedFlag&) = delete;

private:
    const QPointer<QObject> mOwner;
    bool& mFlag;
};

/// Gives what `node` can keep no longer to the one that takes the Tab key through it; false where there is none.
bool LeaveFocusToOwner(const UI_Node& node) {
    for (const UI_Node* inside = node.UI_GetParentNode(); inside != nullptr; inside = inside->UI_GetParentNode()) {
        if (dynamic_cast<const OwnTabOrder*>(inside) == nullptr || inside->UI_GetParentNode() == nullptr) continue;
        return inside->UI_GetParentNode()->UI_GainKeyboardFocus(ui::kFocusLeftOver);
    }
    return false;
}

/// The sibling above which `node` may not be: the first one after it that has a widget.
QWidget* FindAbove(const UI_Node& node) {
    const UI_Container* const siblings = node.UI_GetParentNode()->UI_AsContainer();
    QWidget* above = nullptr;
    for (std::size_t i = siblings->ChildCount(); i-- > 0;) {
        const boost::intrusive_ptr<UI_Node> sibling = siblings->ChildAt(i);
        if (sibling.get() == &node) break;
        const UI_Node::Peer* const peer = sibling->UI_GetPeer();
        if (peer != nullptr && peer->GetWidget() != nullptr) above = peer->GetWidget();
    }
    return above;
}

}  // namespace

/// What is in view, in the coordinates of a node's parent: inside `wanted` there are widgets, outside `kept` there need
/// be none. Between the two they stay, so that scrolling to and fro does not make the same ones again and again.
struct NodeHost::View {
    QRectF wanted;
    QRectF kept;

    View In(const QRectF& frame) const {
        return {(wanted & frame).translated(-frame.topLeft()), (kept & frame).translated(-frame.topLeft())};
    }
};

NodeHost::NodeHost(QWidget& surface)
    : mSurface(surface),
      mThemeObserver(ui::AddThemeObserver([this] { TellThemeChanged(); })),
      mToldScale(GetPixelScale()) {}

void NodeHost::TakeRoot(const NodePtr& root) {
    CheckRoot(root);
    root->LeavePlace();
    // Whoever was told of that may have put it somewhere else.
    CheckRoot(root);
    mRoot = root;
    mToldScale = GetPixelScale();
    root->SetHost(this);
    root->UI_Show(true);
    mSurface.setFixedSize(GetSize());
    WatchAncestors();
    WatchScreen();
    Update();
}

NodeHost::~NodeHost() {
    ui::RemoveThemeObserver(mThemeObserver);
    for (const QPointer<QWidget>& widget : mWatched) {
        if (widget) widget->removeEventFilter(this);
    }
    CallOut("A view that left its window", [this] { LetGoOfRoot(); });
}

void NodeHost::LetGoOfRoot() {
    if (!mRoot) return;
    if (GetFocusNode() != nullptr && !LeaveFocus(true)) mSurface.window()->focusWidget()->clearFocus();
    const NodePtr root = std::move(mRoot);
    mRoot.reset();
    if (root) root->SetHost(nullptr);
}

NodeHost* NodeHost::Of(const UI_Node& node) { return node.mHost; }

float NodeHost::GetPixelScale() const { return static_cast<float>(mSurface.devicePixelRatioF()); }

QSize NodeHost::GetSize() const { return mRoot ? UI_Node::Peer::GetPixelFrame(*mRoot).size() : QSize(0, 0); }

// What is in view

QRect NodeHost::GetViewRect() const {
    if (!mSurface.isVisible()) return QRect();
    QRect view = mSurface.rect();
    QPoint offset;
    for (const QWidget* widget = &mSurface; !widget->isWindow() && widget->parentWidget() != nullptr;
         widget = widget->parentWidget()) {
        offset += widget->pos();
        view = view.translated(widget->pos()) & widget->parentWidget()->rect();
    }
    return view.translated(-offset);
}

void NodeHost::Update() {
    if (mUpdating) return ScheduleUpdate();
    mUpdateScheduled = false;
    if (!mRoot) return;
    const QScopedValueRollback<bool> updating(mUpdating, true);
    QRectF view = GetViewRect();
    // Screen readers list everything that there is, seen or not.
    if (!view.isEmpty() && qt::IsAccessibilityActive()) view = ToQRectF(mRoot->mFrame);
    if (view.isEmpty()) return;
    const qreal margin = view.height() / 2;
    const qreal keeping = view.height() * 2;
    const QPointF origin = ToQRectF(mRoot->mFrame).topLeft();
    const QRectF wanted = view.adjusted(-view.width() / 2, -margin, view.width() / 2, margin);
    const QRectF kept = view.adjusted(-view.width() * 2, -keeping, view.width() * 2, keeping);
    const NodePtr root = mRoot;
    Walk(*root, {wanted.translated(origin), kept.translated(origin)}, mSurface, nullptr);
}

void NodeHost::Walk(UI_Node& node, const View& view, QWidget& parent, QWidget* above) {
    if (!node.mShown) return;
    const QRectF frame = ToQRectF(node.mFrame);
    const bool wanted = view.wanted.intersects(frame);
    if (!node.mPeer) {
        if (wanted) Create(node, parent, above);
    } else if (!wanted && !view.kept.intersects(frame) && CanBeReleased(node)) {
        node.DropPeers();
    }
    QWidget* const widget = node.mPeer ? node.mPeer->GetWidget() : nullptr;
    UI_Container* const container = node.UI_AsContainer();
    if (widget == nullptr || container == nullptr) return;
    const View inside = view.In(frame);
    QWidget* aboveChild = nullptr;
    // From the top one down: a widget that is made later than its neighbours has to go beneath those that cover it.
    for (std::size_t i = container->ChildCount(); i-- > 0;) {
        const NodePtr child = container->ChildAt(i);
        if (!child) continue;
        Walk(*child, inside, *widget, aboveChild);
        if (child->mPeer && child->mPeer->GetWidget() != nullptr) aboveChild = child->mPeer->GetWidget();
    }
}

bool NodeHost::CanBeReleased(UI_Node& node) {
    if (node.mPeer && !node.mPeer->CanBeReleased()) return false;
    const UI_Container* const container = node.UI_AsContainer();
    if (!node.mPeer || container == nullptr) return true;
    for (std::size_t i = 0; i < container->ChildCount(); ++i) {
        if (!CanBeReleased(*container->ChildAt(i))) return false;
    }
    return true;
}

void NodeHost::Create(UI_Node& node, QWidget& parent, QWidget* above) {
    node.mPeer = node.UI_MakePeer();
    if (node.mPeer) node.mPeer->Realize(parent, above);
}

QWidget* NodeHost::RealizeNow(UI_Node& node) {
    QWidget* parent = &mSurface;
    if (node.mParent != nullptr) parent = RealizeNow(*node.mParent);
    if (parent == nullptr) return nullptr;
    if (!node.mPeer) Create(node, *parent, node.mParent != nullptr ? FindAbove(node) : nullptr);
    return node.mPeer ? node.mPeer->GetWidget() : nullptr;
}

void NodeHost::ScheduleUpdate() {
    if (mUpdateScheduled) return;
    mUpdateScheduled = true;
    QCoreApplication::postEvent(this, new QEvent(kUpdateEvent));
}

void NodeHost::OnFrameChanged(const UI_Node& node) {
    if (&node == mRoot.get()) {
        mSurface.setFixedSize(GetSize());
        mSurface.updateGeometry();
    }
    ScheduleUpdate();
}

bool NodeHost::event(QEvent* event) {
    if (event->type() != kUpdateEvent) return QObject::event(event);
    if (mUpdateScheduled) Update();
    return true;
}

// The surface's own events reach it through NodeWidget.
bool NodeHost::eventFilter(QObject*, QEvent* event) {
    switch (event->type()) {
        case QEvent::Move:
        case QEvent::Resize:
        case QEvent::Show:
        case QEvent::Hide:
            ScheduleUpdate();
            break;
        case QEvent::ParentChange:
            OnSurfaceChanged();
            break;
        default:
            break;
    }
    return false;
}

void NodeHost::OnSurfaceChanged() {
    WatchAncestors();
    // At once: what scrolls into view must not be painted without its widgets first.
    Update();
    OnScreenChanged();
}

// Scale

void NodeHost::OnScreenChanged() {
    WatchScreen();
    CheckScale();
}

// A screen that changes its scale says only that its size in display units and its resolution are others.
void NodeHost::WatchScreen() {
    QScreen* const screen = mSurface.screen();
    if (screen == mScreen) return;
    if (mScreen) disconnect(mScreen, nullptr, this, nullptr);
    mScreen = screen;
    if (screen == nullptr) return;
    connect(screen, &QScreen::geometryChanged, this, [this] { CheckScale(); });
    connect(screen, &QScreen::logicalDotsPerInchChanged, this, [this] { CheckScale(); });
    connect(screen, &QScreen::physicalDotsPerInchChanged, this, [this] { CheckScale(); });
}

void NodeHost::CheckScale() {
    const float scale = GetPixelScale();
    if (scale == mToldScale) return;
    mToldScale = scale;
    const NodePtr root = mRoot;
    if (root) CallOut("A view whose scale changed", [&root] { root->TellScaleChanged(); });
}

void NodeHost::TellWindowGoing(UI_Node& node) {
    CallOut("A view whose window goes", [&node] { node.TellWindowGoing(); });
}

// What is round the surface

void NodeHost::WatchAncestors() {
    std::vector<QPointer<QWidget>> ancestors;
    for (QWidget* widget = &mSurface; !widget->isWindow() && widget->parentWidget() != nullptr;
         widget = widget->parentWidget()) {
        ancestors.emplace_back(widget->parentWidget());
    }
    if (ancestors == mWatched) return;
    for (const QPointer<QWidget>& widget : mWatched) {
        if (widget) widget->removeEventFilter(this);
    }
    for (const QPointer<QWidget>& widget : ancestors) widget->installEventFilter(this);
    mWatched = ancestors;
}

// Painting

void NodeHost::Invalidate(const UI_Node& node, const zelcore::geom::RectF* rect) {
    QWidget* const widget = node.mPeer ? node.mPeer->GetWidget() : nullptr;
    if (widget == nullptr) return;
    if (rect == nullptr) {
        widget->update();
        // The node is all that stands in it.
        for (QWidget* const child : widget->findChildren<QWidget*>()) child->update();
        return;
    }
    // Cut off first: what is no number, or too large a one, cannot be told to Qt.
    const zelcore::geom::RectF& frame = node.mFrame;
    const QPointF leftTop(std::max(rect->left, frame.left), std::max(rect->top, frame.top));
    const QPointF rightBottom(std::min(rect->Right(), frame.Right()), std::min(rect->Bottom(), frame.Bottom()));
    const QRectF visible(leftTop, rightBottom);
    if (!(visible.width() > 0 && visible.height() > 0)) return;
    widget->update(visible.translated(-UI_Node::Peer::GetDrawOrigin(node)).toAlignedRect());
}

void NodeHost::PaintNow(const UI_Node& node, bool updateFirst) {
    if (updateFirst && mUpdateScheduled) Update();
    QWidget* const widget = node.mPeer ? node.mPeer->GetWidget() : nullptr;
    if (widget == nullptr || !widget->isVisible()) return;
    // Painting inside painting is what Qt cannot do; it follows at once anyway.
    if (NodeView::IsDrawing()) return;
    // Not QWidget::repaint, which has all of the widget painted, invalidated or not.
    // What has just been shown is invalidated by an event of its own.
    QCoreApplication::sendPostedEvents(nullptr, QEvent::UpdateLater);
    QEvent request(QEvent::UpdateRequest);
    QCoreApplication::sendEvent(widget->window(), &request);
}

// Keyboard

UI_Node* NodeHost::GetFocusNode() const {
    const QWidget* const focus = mSurface.window()->focusWidget();
    if (focus == nullptr || !mSurface.isAncestorOf(focus)) return nullptr;
    const UI_Node::Peer* const peer = UI_Node::Peer::Around(focus);
    return peer != nullptr ? &peer->GetNode() : nullptr;
}

bool NodeHost::GiveFocus(UI_Node& node, ui::FocusChangeReason reason) {
    const NodePtr held(&node);
    QPointer<QWidget> widget = RealizeNow(node);
    if (!widget) return false;
    widget->setFocus(ToQtReason(reason));
    if (!widget) return false;
    // What was clicked can be seen, and must not move away under the mouse.
    if (reason != ui::kFocusByMouse) ScrollIntoView(*widget);
    return widget && node.UI_HasKeyboardFocus(true);
}

bool NodeHost::AdvanceFocus(bool forward) {
    if (!mRoot) return false;
    const QPointer<QObject> self(this);
    const FocusStops stops(mRoot.get(), GetFocusNode(), true);
    const ui::FocusChangeReason reason = GetReason(forward);
    const bool moved = forward ? stops.GiveToNext(reason) : stops.GiveToPrevious(reason);
    return moved || !self || LeaveFocus(forward) || EnterFocus(forward, reason);
}

bool NodeHost::EnterFocus(bool forward, ui::FocusChangeReason reason) {
    const FocusStops stops(mRoot.get(), nullptr, true);
    return forward ? stops.GiveToNext(reason) : stops.GiveToLast(reason);
}

// Qt's own chain holds the widgets of nodes in the order in which they came into view, which means nothing. None of
// them takes the Tab key by its focus policy; here they are only stepped over.
bool NodeHost::LeaveFocus(bool forward) {
    // Two surfaces without a stop would send the focus to and fro.
    if (mLeavingFocus) return false;
    const RaisedFlag leaving(*this, mLeavingFocus);
    return GiveFocusToHost(forward);
}

bool NodeHost::GiveFocusToHost(bool forward) {
    for (QWidget* widget = &mSurface;;) {
        widget = forward ? widget->nextInFocusChain() : widget->previousInFocusChain();
        if (widget == nullptr || widget == &mSurface) return false;
        const bool stop = (widget->focusPolicy() & Qt::TabFocus) != 0 && widget->focusProxy() == nullptr;
        if (!stop || !widget->isVisible() || !widget->isEnabled() || mSurface.isAncestorOf(widget)) continue;
        widget->setFocus(ToQtReason(GetReason(forward)));
        return true;
    }
}

void NodeHost::PassFocusOn(const UI_Node& node) {
    const QPointer<QObject> self(this);
    if (!mPassingFocus) {
        const RaisedFlag passing(*this, mPassingFocus);
        if (LeaveFocusToOwner(node)) return;
        const FocusStops stops(mRoot.get(), &node, false);
        if (!stops.GiveToNext(ui::kFocusLeftOver)) stops.GiveToPrevious(ui::kFocusLeftOver);
    }
    // Nobody took it, or somebody gave it back, or took away the node meanwhile.
    if (self && node.UI_HasKeyboardFocus(true)) mSurface.window()->focusWidget()->clearFocus();
}

void NodeHost::TellThemeChanged() {
    const std::function<void(UI_Node&)> tell = [&tell](UI_Node& node) {
        if (ui::ThemeClient* const client = dynamic_cast<ui::ThemeClient*>(&node)) client->UI_ThemeChanged();
        node.ForEachChild(tell);
    };
    const NodePtr root = mRoot;
    if (root) tell(*root);
}

}  // namespace zelui
