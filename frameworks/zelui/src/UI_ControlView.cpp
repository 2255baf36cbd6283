#include <zelui/UI_ControlView.h>

#include "Fonts.h"

namespace zelui {
namespace controls {

UI_ControlChangedMessage::UI_ControlChangedMessage(const boost::intrusive_ptr<UI_ControlView>& control)
    : mControl(control) {}

UI_ControlChangedMessage::~UI_ControlChangedMessage() = default;

UI_ControlView::UI_ControlView(bool wantsKeyboardFocus) : mWantsKeyboardFocus(wantsKeyboardFocus) {}

UI_ControlView::~UI_ControlView() = default;

void UI_ControlView::NotifyWhenChanged(const boost::shared_ptr<ChangedFunction>& function) { mChanged = function; }

void UI_ControlView::SetWantsKeyboardFocus(bool wants) {
    if (wants == mWantsKeyboardFocus) return;
    mWantsKeyboardFocus = wants;
    UI_SyncPeer();
}

bool UI_ControlView::UI_WantsKeyboardFocus() const { return mWantsKeyboardFocus; }

float UI_ControlView::DefaultTextSize() { return kDefaultTextSize; }

void UI_ControlView::TellChanged() {
    UI_ControlChangedMessage message(this);
    TellChanged(message);
}

void UI_ControlView::TellChanged(UI_ControlChangedMessage& message) {
    // It may set another one, which must not take this one away while it runs.
    const boost::shared_ptr<ChangedFunction> function = mChanged;
    if (function && !function->empty()) (*function)(&message);
}

}  // namespace controls
}  // namespace zelui
