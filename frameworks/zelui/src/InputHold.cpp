#include "InputHold.h"

#include <QCoreApplication>
#include <QEvent>
#include <QGuiApplication>
#include <QThread>
#include <QWidget>
#include <QWindow>

namespace zelui {

namespace {

bool IsInput(QEvent::Type type) {
    switch (type) {
        case QEvent::MouseButtonPress:
        case QEvent::MouseButtonRelease:
        case QEvent::MouseButtonDblClick:
        case QEvent::KeyPress:
        case QEvent::KeyRelease:
        case QEvent::ShortcutOverride:
        case QEvent::Wheel:
        case QEvent::TouchBegin:
        case QEvent::TouchUpdate:
        case QEvent::TouchEnd:
        case QEvent::TabletPress:
        case QEvent::TabletRelease:
        case QEvent::ContextMenu:
        case QEvent::DragEnter:
        case QEvent::Drop:
        case QEvent::NativeGesture:
        case QEvent::Close:
            return true;
        default:
            return false;
    }
}

}  // namespace

InputHold::InputHold(const QWidget& dialog)
    : mDialog(dialog.windowHandle()), mLoopLevel(QThread::currentThread()->loopLevel()) {
    QCoreApplication::instance()->installEventFilter(this);
}

InputHold::~InputHold() { QCoreApplication::instance()->removeEventFilter(this); }

bool InputHold::eventFilter(QObject* receiver, QEvent* event) {
    if (QThread::currentThread()->loopLevel() > mLoopLevel) return false;
    // Input enters through windows; shortcuts alone go straight to what they trigger.
    if (event->type() == QEvent::Shortcut) return !IsAllowed(QGuiApplication::focusWindow());
    if (!receiver->isWindowType() || !IsInput(event->type())) return false;
    return !IsAllowed(static_cast<QWindow*>(receiver));
}

bool InputHold::IsAllowed(const QWindow* window) const {
    if (!window || !mDialog) return false;
    return window == mDialog || mDialog->isAncestorOf(window, QWindow::IncludeTransients);
}

}  // namespace zelui
