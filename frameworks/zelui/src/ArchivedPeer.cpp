#include "ArchivedPeer.h"

#include <algorithm>
#include <cmath>
#include <QKeyEvent>
#include <QScreen>
#include <QWindow>
#include <utility>

#include <zelui/Application.h>
#include <zelui/QtBridge.h>

#include "CallOut.h"
#include "DialogLayout.h"
#include "DialogLayoutGrowth.h"
#include "DialogWindow.h"
#include "KeyboardMapping.h"
#include "NodePeer.h"
#include "PlainText.h"

namespace zelui {
namespace ui {

namespace {

// More than any wall of screens; all of a window's pixels are in memory.
const int kLargestSize = 16384;

int ToInt(long number) { return static_cast<int>(std::clamp<long>(number, -QWIDGETSIZE_MAX, QWIDGETSIZE_MAX)); }

int ToSize(float number) {
    // The comparison is false for what is no number.
    return number > 0.0f ? static_cast<int>(std::ceil(std::min(number, static_cast<float>(kLargestSize)))) : 0;
}

zelcore::geom::Rect ToRect(const QRect& rect) { return {rect.x(), rect.y(), rect.width(), rect.height()}; }

void SyncPeer(const boost::intrusive_ptr<controls::UI_Button>& button) {
    if (button && button->UI_GetPeer() != nullptr) button->UI_GetPeer()->Sync();
}

bool CanBePressed(const UI_Node& button) {
    const UI_Node* node = &button;
    while (node != nullptr && node->UI_IsShown()) node = node->UI_GetParentNode();
    return node == nullptr && !button.UI_IsDisabled();
}

}  // namespace

UI_ArchivedDialog::ArchivedPeer::ArchivedPeer(const QString& title, HWND parent, DialogLayoutItem root)
    : Peer(parent, true), mRoot(static_cast<UI_SubView*>(root.node.get())) {
    GrowForTexts(root);
    mLayout = std::make_shared<DialogLayout>(root);
    const zelcore::geom::RectF frame = mRoot->UI_GetLocalRectF();
    DialogWindow* const window = GetDialogWindow();
    window->setObjectName(QStringLiteral("ArchivedDialog"));
    window->setWindowTitle(ToWindowTitle(title));
    window->setWindowFlag(Qt::WindowMaximizeButtonHint);
    window->resize(ToSize(frame.width), ToSize(frame.height));
    new qt::NodeWidget(mRoot, window);
    OnSized();
    window->installEventFilter(this);
    mKeys = std::make_unique<ArchivedKeys>(*window, [this](const QKeyEvent& key) { return OnKey(key); });
}

UI_ArchivedDialog::ArchivedPeer::~ArchivedPeer() {
    if (DialogWindow* const window = GetDialogWindow()) window->removeEventFilter(this);
    // The window stays until the event loop is reached, but what the controls know of the dialog has gone already:
    // another container takes them out of the window.
    CallOut("A dialog's nodes that left their window", [this] {
        const boost::intrusive_ptr<UI_SubView> nowhere(new UI_SubView);  // NOLINT(bugprone-unhandled-exception-at-new)
        nowhere->ChildPushBack(mRoot);
    });
}

DialogWindow* UI_ArchivedDialog::ArchivedPeer::GetDialogWindow() const {
    return static_cast<DialogWindow*>(GetWindow());
}

// Keys

void UI_ArchivedDialog::ArchivedPeer::SetOkButton(const ButtonPtr& button) {
    const ButtonPtr before = std::exchange(mOk, button);
    if (DialogWindow* const window = GetDialogWindow()) window->SetDefaultNode(button.get());
    SyncPeer(before);
    SyncPeer(button);
}

// The object may go in any of the calls; nothing of it is touched after them.

bool UI_ArchivedDialog::ArchivedPeer::OnKey(const QKeyEvent& key) {
    const boost::intrusive_ptr<UI_Dialog> alive = Hold();
    if (!alive || !IsOpen() || GetDialog() == nullptr) return false;
    bool used = false;
    CallOut("A dialog's keyboard handler", [&] { used = GetDialog()->UI_DoPreKeyboardEvent(ToKeyboardEvent(key)); });
    // A key that has closed the dialog is not for what was in it.
    return used || !IsOpen();
}

bool UI_ArchivedDialog::ArchivedPeer::OnUnusedKey(const QKeyEvent& key) {
    if ((key.modifiers() & ~Qt::KeypadModifier) != 0) return false;
    const bool isReturn = key.key() == Qt::Key_Return || key.key() == Qt::Key_Enter;
    if (!isReturn && key.key() != Qt::Key_Escape) return false;
    // Held down since before, it was meant for what was there before.
    if (key.isAutoRepeat()) return true;
    const ButtonPtr ok = mOk;
    if (!isReturn)
        DoCancel();
    else if (ok && CanBePressed(*ok))
        CallOut("A button's handler", [&ok] { UI_ArchivedDialog::Press(*ok); });
    return true;
}

bool UI_ArchivedDialog::ArchivedPeer::DoCancel() {
    const ButtonPtr cancel = mCancel;
    if (!cancel) return Peer::DoCancel();
    if (cancel->UI_IsDisabled()) return false;
    CallOut("A button's handler", [&cancel] { UI_ArchivedDialog::Press(*cancel); });
    return true;
}

// The window

bool UI_ArchivedDialog::ArchivedPeer::eventFilter(QObject*, QEvent* event) {
    switch (event->type()) {
        case QEvent::KeyPress:
            return OnUnusedKey(static_cast<const QKeyEvent&>(*event));
        case QEvent::Resize:
            OnSized();
            break;
        case QEvent::Show:
            OnShow();
            break;
        case QEvent::WindowActivate:
            // Only now does the frame round the window have its size everywhere.
            if (mWanted) FitStructure(*std::exchange(mWanted, std::nullopt));
            break;
        case QEvent::Hide:
            OnHide();
            break;
        default:
            break;
    }
    return false;
}

void UI_ArchivedDialog::ArchivedPeer::OnSized() {
    const boost::intrusive_ptr<UI_Dialog> alive = Hold();
    const zelcore::geom::PointF size{static_cast<float>(GetWindow()->width()),
                                     static_cast<float>(GetWindow()->height())};
    const zelcore::geom::RectF frame = mRoot->UI_GetLocalRectF();
    if (frame == zelcore::geom::RectF{0.0f, 0.0f, size.x, size.y}) return;
    const std::shared_ptr<DialogLayout> layout = mLayout;
    CallOut("Laying out a dialog", [&] { layout->SetSize(size); });
    OS_Dialog* const dialog = GetDialog();
    if (dialog != nullptr)
        CallOut("A dialog's size handler", [&] { dialog->UI_SizeChanged(mRoot->UI_GetLocalRectF()); });
}

void UI_ArchivedDialog::ArchivedPeer::OnShow() {
    if (mWanted)
        FitStructure(*mWanted);
    else if (!mWasShown)
        FitScreen();
    mWasShown = true;
    // Keys need somebody to go to; who was given the focus before keeps it.
    if (!mRoot->UI_HasKeyboardFocus(true)) mRoot->UI_GainKeyboardFocus(kFocusByWindow);
}

void UI_ArchivedDialog::ArchivedPeer::OnHide() {
    mWanted.reset();
    mStructure = GetWindow()->frameGeometry();
    // Otherwise the window system might find it another place the next time.
    if (!GetWindow()->isMaximized()) GetWindow()->move(mStructure.topLeft());
}

void UI_ArchivedDialog::ArchivedPeer::FitScreen() {
    // Offscreen there is nothing to fit into.
    if (!Application::HasDisplay()) return;
    const QWindow* const parent = GetWindow()->windowHandle()->transientParent();
    const QScreen* const screen = parent != nullptr ? parent->screen() : GetWindow()->screen();
    if (screen == nullptr) return;
    const QSize frame = GetWindow()->frameGeometry().size() - GetWindow()->size();
    GetWindow()->resize(GetWindow()->size().boundedTo(screen->availableSize() - frame));
}

void UI_ArchivedDialog::ArchivedPeer::FitStructure(const QRect& rect) {
    const QSize frame = GetWindow()->frameGeometry().size() - GetWindow()->size();
    GetWindow()->move(rect.topLeft());
    GetWindow()->resize((rect.size() - frame).boundedTo(QSize(kLargestSize, kLargestSize)).expandedTo(QSize(0, 0)));
    OnSized();
}

void UI_ArchivedDialog::ArchivedPeer::SetMinimumSize(const zelcore::geom::PointF& size) {
    if (GetWindow() == nullptr) return;
    GetWindow()->setMinimumSize(ToSize(size.x), ToSize(size.y));
    // Qt tells a hidden window of its size when it is shown.
    OnSized();
}

zelcore::geom::Rect UI_ArchivedDialog::ArchivedPeer::GetStructureRect() const {
    if (GetWindow() != nullptr && GetWindow()->isVisible()) return ToRect(GetWindow()->frameGeometry());
    if (mWanted) return ToRect(*mWanted);
    if (mWasShown || GetWindow() == nullptr) return ToRect(mStructure);
    return ToRect(QRect(QPoint(), GetWindow()->size()));
}

void UI_ArchivedDialog::ArchivedPeer::SetStructureRect(const zelcore::geom::Rect& rect) {
    if (GetWindow() == nullptr || rect.IsEmpty()) return;
    const QRect wanted(ToInt(rect.left), ToInt(rect.top), ToInt(rect.width), ToInt(rect.height));
    if (!GetWindow()->isVisible()) mWanted = wanted;
    if (GetWindow()->isMaximized()) GetWindow()->setWindowState(Qt::WindowNoState);
    FitStructure(wanted);
}

}  // namespace ui
}  // namespace zelui
