#include "TreeWake.h"

#include <QCoreApplication>
#include <QEvent>

namespace zelui {

namespace {

const QEvent::Type kWakeEvent = static_cast<QEvent::Type>(QEvent::registerEventType());

}  // namespace

TreeWake::TreeWake(const std::function<void()>& function) : mFunction(function) {}

void TreeWake::Schedule() {
    if (mIsScheduled) return;
    mIsScheduled = true;
    QCoreApplication::postEvent(this, new QEvent(kWakeEvent), Qt::HighEventPriority);
}

bool TreeWake::event(QEvent* event) {
    if (event->type() != kWakeEvent) return QObject::event(event);
    mIsScheduled = false;
    // The function may let go of this.
    const std::function<void()> function = mFunction;
    function();
    return true;
}

}  // namespace zelui
