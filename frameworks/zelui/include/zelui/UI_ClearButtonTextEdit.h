#pragma once

#include <zelui/UI_TextEdit.h>

namespace zelui {
namespace controls {

/// A text field with a button in it that empties it, shown while there is something to empty. Emptying it with the
/// button is a whole gesture; typing that was under way ends before it. The field then has the focus, and the user can
/// undo it.
class ZELUI_API UI_ClearButtonTextEdit : public UI_TextEdit {
public:
    UI_ClearButtonTextEdit();

    /// What the field itself does after a change: it shows or hides the button. Whoever takes its notifications over by
    /// NotifyWhenChanged or NotifyWhenChangedInteractively calls the one of these that belongs to it first; without it
    /// the button is right again after whatever else the program sets. `message` is not looked at.
    virtual void EditTextChanged(UI_ControlChangedMessage* message);
    /// The same for the steps of a gesture.
    virtual void EditTextChangedInteractively(UI_InteractiveControlChangedMessage* message);

protected:
    ~UI_ClearButtonTextEdit() override;
};

/// A field for words to search for: a clear-button field with a magnifier before the text and the placeholder "Search".
class ZELUI_API UI_SearchBox : public UI_ClearButtonTextEdit {
public:
    UI_SearchBox();

protected:
    ~UI_SearchBox() override;
};

}  // namespace controls
}  // namespace zelui
