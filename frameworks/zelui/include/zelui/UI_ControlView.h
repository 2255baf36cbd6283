#pragma once

#include <boost/function.hpp>
#include <boost/intrusive_ptr.hpp>
#include <boost/shared_ptr.hpp>

#include <zelui/UI_Node.h>

namespace zelui {
namespace controls {

class UI_ControlView;

/// Told when the user has changed a control. Valid for the time of the call.
class ZELUI_API UI_ControlChangedMessage {
public:
    /// Of that control.
    explicit UI_ControlChangedMessage(const boost::intrusive_ptr<UI_ControlView>& control);
    virtual ~UI_ControlChangedMessage();

    /// The control that changed.
    const boost::intrusive_ptr<UI_ControlView>& GetControl() const { return mControl; }

private:
    boost::intrusive_ptr<UI_ControlView> mControl;
};

/// A control: a real one of the platform's toolkit behind a node, with its keyboard, accessibility and input methods.
/// What it shows is the node's; setting it from the program tells nobody. Text comes from plug-ins and files: none of
/// it is read as markup, and what does not fit is shortened with "…", the whole of it in the tool tip.
///
/// A control without a text of its own is known to screen readers by its UI_SetAccessibleName, else by the text of the
/// static text that stands nearest before it among its siblings.
///
/// Main thread.
class ZELUI_API UI_ControlView : public ui::UI_Node {
public:
    /// Called after a person has changed the control; the message is there during the call only.
    typedef boost::function<void(UI_ControlChangedMessage*)> ChangedFunction;

    /// Has `function` called after each change that the user makes. Held until another one or null takes its place; it
    /// may let go of the control, or of all that is shown.
    void NotifyWhenChanged(const boost::shared_ptr<ChangedFunction>& function);

    /// Whether a click gives the control the keyboard focus and the Tab key stops at it. True for controls that take
    /// keys, unless it is set.
    void SetWantsKeyboardFocus(bool wants);
    bool UI_WantsKeyboardFocus() const override;

    /// The size of controls' texts in display units: 11.
    static float DefaultTextSize();

protected:
    /// `wantsKeyboardFocus` makes it a stop of the Tab key.
    explicit UI_ControlView(bool wantsKeyboardFocus);
    ~UI_ControlView() override;

    /// Calls the function, if there is one. The control stays alive meanwhile.
    void TellChanged();
    /// The same with a message of a derived kind.
    void TellChanged(UI_ControlChangedMessage& message);

private:
    boost::shared_ptr<ChangedFunction> mChanged;
    bool mWantsKeyboardFocus;
};

}  // namespace controls
}  // namespace zelui
