#include <zelui/UI_ClearButtonTextEdit.h>

#include <boost/make_shared.hpp>
#include <zelcore/Localizer.h>

namespace zelui {
namespace controls {

UI_ClearButtonTextEdit::UI_ClearButtonTextEdit() {
    mHasClearButton = true;
    NotifyWhenChanged(
        boost::make_shared<ChangedFunction>([this](UI_ControlChangedMessage* message) { EditTextChanged(message); }));
    NotifyWhenChangedInteractively(boost::make_shared<InteractivelyChangedFunction>(
        [this](UI_InteractiveControlChangedMessage* message) { EditTextChangedInteractively(message); }));
}

UI_ClearButtonTextEdit::~UI_ClearButtonTextEdit() = default;

void UI_ClearButtonTextEdit::EditTextChanged(UI_ControlChangedMessage*) { UI_SyncPeer(); }

void UI_ClearButtonTextEdit::EditTextChangedInteractively(UI_InteractiveControlChangedMessage*) { UI_SyncPeer(); }

UI_SearchBox::UI_SearchBox() {
    mHasMagnifier = true;
    SetPlaceholder(zelcore::config::Localize("$$$/zelui/Search=Search"));
}

UI_SearchBox::~UI_SearchBox() = default;

}  // namespace controls
}  // namespace zelui
