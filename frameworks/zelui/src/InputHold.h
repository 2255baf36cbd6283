#pragma once

#include <QObject>
#include <QPointer>

class QWidget;
class QWindow;

namespace zelui {

/// While it exists, people's input to windows other than one dialog and those opened from it is thrown away, as under a
/// modal dialog: work in progress lets input happen, and a click elsewhere must not start the same work again inside
/// itself. Loops run meanwhile (a message box) get all input.
class InputHold final : private QObject {
public:
    explicit InputHold(const QWidget& dialog);
    ~InputHold() override;

private:
    bool eventFilter(QObject* receiver, QEvent* event) override;
    bool IsAllowed(const QWindow* window) const;

    QPointer<QWindow> mDialog;
    int mLoopLevel;
};

}  // namespace zelui
