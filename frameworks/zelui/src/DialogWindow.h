#pragma once

#include <functional>

#include <QDialog>

namespace zelui {

namespace ui {
class UI_Node;
}

/// The window of a dialog. It never hides itself: pressing Escape, a default button or the window's close button only
/// asks, and whoever made it decides.
class DialogWindow final : public QDialog {
public:
    typedef std::function<void(bool accepted)> Asked;

    /// `closable` gives the title bar its close button.
    DialogWindow(bool closable, const Asked& asked);

    void accept() override;
    void reject() override;

    /// The node that Return stands for; its button is drawn so. Null: none. Only compared, never used.
    void SetDefaultNode(const ui::UI_Node* node) { mDefaultNode = node; }
    bool IsDefaultNode(const ui::UI_Node& node) const { return mDefaultNode == &node; }

    /// Stops asking; for the time between the end of the dialog and that of its window.
    void Silence();

private:
    void showEvent(QShowEvent* event) override;

    Asked mAsked;
    const ui::UI_Node* mDefaultNode = nullptr;
};

}  // namespace zelui
