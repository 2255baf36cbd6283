#pragma once

#include <zelui/UI_ControlView.h>

namespace zelui {
namespace ui {
class UI_ArchivedDialog;
}
namespace controls {

/// Told when a button was pressed and released, or a check box toggled.
class ZELUI_API UI_ButtonChangedMessage : public UI_ControlChangedMessage {
public:
    /// Of that button.
    explicit UI_ButtonChangedMessage(const boost::intrusive_ptr<UI_ControlView>& button);
    ~UI_ButtonChangedMessage() override;
};

/// What all buttons are: they take the focus, and tell when they were used, by a click or by the space bar.
class ZELUI_API UI_Button : public UI_ControlView {
public:
    /// Called when a person has used the button; the message is there during the call only.
    typedef boost::function<void(UI_ButtonChangedMessage*)> ButtonChangedFunction;

    using UI_ControlView::NotifyWhenChanged;
    /// Has `function` called each time that the button was used. As NotifyWhenChanged of every control, which is called
    /// as well, after this one.
    void NotifyWhenChanged(const boost::shared_ptr<ButtonChangedFunction>& function);

    /// Sets what stands on the button.
    void SetText(const zelcore::ustring& text);
    /// What stands on the button.
    const zelcore::ustring& GetText() const { return mText; }

protected:
    UI_Button();
    ~UI_Button() override;

    /// Tells whoever listens that a person has used the button. For derived classes.
    void TellUsed();

private:
    friend class ui::UI_ArchivedDialog;
    boost::shared_ptr<ButtonChangedFunction> mButtonChanged;
    boost::function<void()> mAfterUse;  ///< what the dialog does whose button this is, after all others were told
    zelcore::ustring mText;
};

}  // namespace controls
}  // namespace zelui
