#pragma once

#include <zelui/UI_ControlView.h>

namespace zelui {
namespace controls {

/// Told while the user is at work on a control. A gesture is: one start, any number of changes, one end or one cancel.
class ZELUI_API UI_InteractiveControlChangedMessage : public UI_ControlChangedMessage {
public:
    /// Where in a gesture a change is.
    enum ChangeMessage {
        kStart = 0,   ///< the user took hold of the control; its value is as before
        kChange = 1,  ///< the value changed
        kEnd = 2,     ///< the user let go of it; the value is final
        kCancel = 3   ///< the user let go of it, or was made to, and there is no new value
    };

    /// Of that control, at that place of the gesture.
    UI_InteractiveControlChangedMessage(const boost::intrusive_ptr<UI_ControlView>& control, ChangeMessage message);
    ~UI_InteractiveControlChangedMessage() override;

    /// Where in the gesture it is.
    ChangeMessage GetChangeMessage() const { return mMessage; }

private:
    ChangeMessage mMessage;
};

/// A control that can be watched while the user is at work on it.
class ZELUI_API UI_InteractiveControlView : public UI_ControlView {
public:
    /// Called for each step of a gesture; the message is there during the call only.
    typedef boost::function<void(UI_InteractiveControlChangedMessage*)> InteractivelyChangedFunction;

    /// Has `function` called for every step of every gesture. Held until another one or null takes its place; it may
    /// let go of the control, or of all that is shown.
    void NotifyWhenChangedInteractively(const boost::shared_ptr<InteractivelyChangedFunction>& function);

protected:
    /// `wantsKeyboardFocus` makes it a stop of the Tab key.
    explicit UI_InteractiveControlView(bool wantsKeyboardFocus);
    ~UI_InteractiveControlView() override;

    /// Calls the function with this step, and after an end that of NotifyWhenChanged too. The control stays alive
    /// meanwhile.
    void TellGesture(UI_InteractiveControlChangedMessage::ChangeMessage message);

private:
    boost::shared_ptr<InteractivelyChangedFunction> mChangedInteractively;
};

}  // namespace controls
}  // namespace zelui
