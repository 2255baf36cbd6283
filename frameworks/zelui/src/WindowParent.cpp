#include "WindowParent.h"

#include <algorithm>

#include <QGuiApplication>
#include <QRect>
#include <QScreen>
#include <QWidget>
#include <QWindow>

#include <zelui/QtBridge.h>

namespace zelui {

namespace {

QRect PlaceOver(const QRect& parent, const QSize& size, const QRect& screen) {
    QRect frame(QPoint(), size);
    frame.moveCenter(parent.center());
    // The top left corner wins where the dialog is larger than the screen: that is where its title is.
    frame.moveRight(std::min(frame.right(), screen.right()));
    frame.moveBottom(std::min(frame.bottom(), screen.bottom()));
    frame.moveLeft(std::max(frame.left(), screen.left()));
    frame.moveTop(std::max(frame.top(), screen.top()));
    return frame;
}

bool Belongs(const QWindow* window, const QWindow* to) {
    return window == to || to->isAncestorOf(window, QWindow::IncludeTransients);
}

}  // namespace

WindowParent::WindowParent(HWND parent) : mHandle(parent), mWidget(qt::FindWidget(parent)) {}

WindowParent::~WindowParent() = default;

// Only these platforms have window ids that mean something outside of Qt.
QWindow* WindowParent::MakeForeignWindow() {
    const QString platform = QGuiApplication::platformName();
    if (platform != QLatin1String("xcb") && platform != QLatin1String("windows")) return nullptr;
    if (!mForeign) mForeign.reset(QWindow::fromWinId(reinterpret_cast<WId>(mHandle)));
    return mForeign.get();
}

QWindow* WindowParent::FindWindow() {
    QWindow* parent = nullptr;
    if (mWidget) {
        mWidget->window()->winId();
        parent = mWidget->window()->windowHandle();
    } else if (mHandle) {
        mWidget = qt::FindWidget(mHandle);
        parent = mWidget ? mWidget->window()->windowHandle() : MakeForeignWindow();
    }
    QWindow* const modal = QGuiApplication::modalWindow();
    if (modal && (!parent || !Belongs(parent, modal))) return modal;
    return parent;
}

void WindowParent::Attach(QWidget& dialog) {
    QWindow* const parent = FindWindow();
    dialog.winId();
    const bool cycle = parent && Belongs(parent, dialog.windowHandle());
    if (!cycle) dialog.windowHandle()->setTransientParent(parent);
}

void WindowParent::Centre(QWidget& dialog) {
    const QWindow* const parent = dialog.windowHandle()->transientParent();
    if (!parent || !parent->screen() || dialog.testAttribute(Qt::WA_Moved)) return;
    // Of another toolkit's window Qt knows no place; the window manager does and puts a transient over its middle.
    if (parent->size().isEmpty()) return;
    const QRect place(parent->mapToGlobal(QPoint()), parent->size());
    dialog.move(PlaceOver(place, dialog.frameGeometry().size(), parent->screen()->availableGeometry()).topLeft());
}

}  // namespace zelui
