#pragma once

#include <functional>

#include <QDialog>

namespace zelui {

/// The window of a dialog. It never hides itself: pressing Escape, a default button or the window's close button only
/// asks, and whoever made it decides.
class DialogWindow final : public QDialog {
public:
    typedef std::function<void(bool accepted)> Asked;

    /// `closable` gives the title bar its close button.
    DialogWindow(bool closable, const Asked& asked);

    void accept() override;
    void reject() override;

    /// Stops asking; for the time between the end of the dialog and that of its window.
    void Silence();

private:
    void showEvent(QShowEvent* event) override;

    Asked mAsked;
};

}  // namespace zelui
