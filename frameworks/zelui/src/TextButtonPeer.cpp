#include "TextButtonPeer.h"

#include <QKeyEvent>
#include <QPushButton>
#include <QStyle>
#include <QStyleOptionButton>

#include "CallOut.h"
#include "DialogWindow.h"
#include "SharedPalette.h"

namespace zelui {
namespace controls {

namespace {

/// Draws itself as the one that Return stands for without Qt's own choice of one.
class PushButton final : public QPushButton {
public:
    explicit PushButton(QWidget& parent) : QPushButton(&parent) {}

    void SetLooksDefault(bool looks) {
        if (looks == mLooksDefault) return;
        mLooksDefault = looks;
        update();
    }

protected:
    void initStyleOption(QStyleOptionButton* option) const override {
        QPushButton::initStyleOption(option);
        UseSharedPalette(*option, *this);
        option->features.setFlag(QStyleOptionButton::DefaultButton, mLooksDefault);
    }

private:
    bool mLooksDefault = false;
};

}  // namespace

UI_TextButton::TextButtonPeer::TextButtonPeer(UI_TextButton& button) : ButtonPeer(button) {}

QWidget* UI_TextButton::TextButtonPeer::MakeControl(QWidget& parent) {
    PushButton* const button = new PushButton(parent);
    // A dialog's default button is set by the dialog, not by where the focus is.
    button->setAutoDefault(false);
    QObject::connect(button, &QPushButton::clicked, this, [this] { OnClicked(); });
    return button;
}

int UI_TextButton::TextButtonPeer::GetTextWidth() const {
    QStyleOptionButton option;
    option.initFrom(GetWidget());
    return GetWidget()->style()->subElementRect(QStyle::SE_PushButtonContents, &option, GetWidget()).width();
}

void UI_TextButton::TextButtonPeer::OnSync() {
    ButtonPeer::OnSync();
    const DialogWindow* const window = dynamic_cast<const DialogWindow*>(GetWidget()->window());
    static_cast<PushButton&>(GetQtButton()).SetLooksDefault(window != nullptr && window->IsDefaultNode(GetNode()));
}

bool UI_TextButton::TextButtonPeer::UsesKey(const QKeyEvent& key) const {
    return ButtonPeer::UsesKey(key) || (IsReturn(key) && IsPlain(key));
}

// Whether Return presses the button that has the focus differs between desktops, and people between them.
bool UI_TextButton::TextButtonPeer::OnEvent(QEvent& event) {
    if (event.type() != QEvent::KeyPress) return false;
    const QKeyEvent& key = static_cast<const QKeyEvent&>(event);
    if (!IsReturn(key) || !IsPlain(key)) return false;
    event.accept();
    if (!key.isAutoRepeat()) GetQtButton().click();
    return true;
}

void UI_TextButton::TextButtonPeer::OnClicked() {
    const boost::intrusive_ptr<UI_TextButton> button(static_cast<UI_TextButton*>(&GetNode()));
    CallOut("A button's handler", [&button] { button->TellUsed(); });
}

}  // namespace controls
}  // namespace zelui
