#include "ArchivedKeys.h"

#include <QCoreApplication>
#include <QKeyEvent>

namespace zelui {

ArchivedKeys::ArchivedKeys(QWidget& window, const OnKey& onKey) : mWindow(&window), mOnKey(onKey) {
    // Not of the window: it would see only what its widgets have no use for.
    QCoreApplication::instance()->installEventFilter(this);
}

ArchivedKeys::~ArchivedKeys() {
    if (QCoreApplication::instance() != nullptr) QCoreApplication::instance()->removeEventFilter(this);
}

bool ArchivedKeys::eventFilter(QObject* watched, QEvent* event) {
    const bool isKey = event->type() == QEvent::KeyPress || event->type() == QEvent::KeyRelease;
    if (!isKey || !watched->isWidgetType() || !mWindow) return false;
    QWidget& receiver = static_cast<QWidget&>(*watched);
    if (receiver.window() != mWindow || IsPassedOn(receiver, *event)) return false;
    const OnKey onKey = mOnKey;
    if (!onKey(static_cast<const QKeyEvent&>(*event))) return false;
    event->accept();
    return true;
}

bool ArchivedKeys::IsPassedOn(QWidget& receiver, const QEvent& event) {
    const bool passedOn = mLastEvent == &event && mLastType == event.type() && mLastReceiver &&
                          mLastReceiver->parentWidget() == &receiver;
    mLastEvent = &event;
    mLastType = event.type();
    mLastReceiver = &receiver;
    return passedOn;
}

}  // namespace zelui
