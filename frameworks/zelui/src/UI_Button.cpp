#include <zelui/UI_Button.h>

namespace zelui {
namespace controls {

UI_ButtonChangedMessage::UI_ButtonChangedMessage(const boost::intrusive_ptr<UI_ControlView>& button)
    : UI_ControlChangedMessage(button) {}

UI_ButtonChangedMessage::~UI_ButtonChangedMessage() = default;

UI_Button::UI_Button() : UI_ControlView(true) {}

UI_Button::~UI_Button() = default;

void UI_Button::NotifyWhenChanged(const boost::shared_ptr<ButtonChangedFunction>& function) {
    mButtonChanged = function;
}

void UI_Button::SetText(const zelcore::ustring& text) {
    if (text == mText) return;
    mText = text;
    UI_SyncPeer();
}

void UI_Button::TellUsed() {
    UI_ButtonChangedMessage message(this);
    // It may set another one, which must not take this one away while it runs.
    const boost::shared_ptr<ButtonChangedFunction> function = mButtonChanged;
    if (function && !function->empty()) (*function)(&message);
    TellChanged(message);
    const boost::function<void()> afterUse = mAfterUse;
    if (afterUse) afterUse();
}

}  // namespace controls
}  // namespace zelui
