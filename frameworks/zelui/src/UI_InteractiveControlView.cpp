#include <zelui/UI_InteractiveControlView.h>

namespace zelui {
namespace controls {

UI_InteractiveControlChangedMessage::UI_InteractiveControlChangedMessage(
    const boost::intrusive_ptr<UI_ControlView>& control, ChangeMessage message)
    : UI_ControlChangedMessage(control), mMessage(message) {}

UI_InteractiveControlChangedMessage::~UI_InteractiveControlChangedMessage() = default;

UI_InteractiveControlView::UI_InteractiveControlView(bool wantsKeyboardFocus) : UI_ControlView(wantsKeyboardFocus) {}

UI_InteractiveControlView::~UI_InteractiveControlView() = default;

void UI_InteractiveControlView::NotifyWhenChangedInteractively(
    const boost::shared_ptr<InteractivelyChangedFunction>& function) {
    mChangedInteractively = function;
}

void UI_InteractiveControlView::TellGesture(UI_InteractiveControlChangedMessage::ChangeMessage step) {
    UI_InteractiveControlChangedMessage message(this, step);
    // It may set another one, which must not take this one away while it runs.
    const boost::shared_ptr<InteractivelyChangedFunction> function = mChangedInteractively;
    if (function && !function->empty()) (*function)(&message);
    if (step == UI_InteractiveControlChangedMessage::kEnd) TellChanged(message);
}

}  // namespace controls
}  // namespace zelui
