#pragma once

#include <functional>

#include <QEvent>
#include <QObject>
#include <QPointer>
#include <QWidget>

class QKeyEvent;

namespace zelui {

/// Sees each key of a window once, before the widget that gets it.
class ArchivedKeys final : private QObject {
public:
    /// True uses the key up; the object may go in the call.
    typedef std::function<bool(const QKeyEvent& key)> OnKey;

    ArchivedKeys(QWidget& window, const OnKey& onKey);
    ~ArchivedKeys() override;

private:
    bool eventFilter(QObject* watched, QEvent* event) override;
    bool IsPassedOn(QWidget& receiver, const QEvent& event);

    QPointer<QWidget> mWindow;
    OnKey mOnKey;
    // Where a key is on its way from the widget that got it to the window: a widget that has no use for it passes the
    // same event on to the one round it.
    const QEvent* mLastEvent = nullptr;
    int mLastType = QEvent::None;
    QPointer<QWidget> mLastReceiver;
};

}  // namespace zelui
