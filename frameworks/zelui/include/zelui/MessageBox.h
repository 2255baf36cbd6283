#pragma once

#include <boost/function.hpp>
#include <zelcore/PlatformHandles.h>
#include <zelcore/ustring.h>

#include <zelui/SupplierInterface.h>

namespace zelui {
namespace dialogs {
namespace messagebox {

/// The buttons of a box; combined by "or". The numbers are the toolkit's own and do not change.
enum Button { kNoButton = 0, kOKButton = 1, kCancelButton = 2, kYesButton = 16, kNoAnswerButton = 64 };

/// What a box is about.
enum Icon { kIconNote = 0, kIconError = 1, kIconCaution = 2 };

/// Called with the answer before the box returns, when the box is off the screen already.
typedef boost::function<void(Button)> ButtonHandler;

/// A modal box with these buttons over the window `parent` (null: over the application), in the order that the platform
/// has for them. Bits of `buttons` that are none count for nothing; without any button it has OK. An icon that is not
/// known is that of a note. Messages are never markup, and long ones are shortened, the whole behind a details button.
///
/// Returns the button that was pressed. Escape and closing the window are Cancel, or No, or OK, or else the only one.
/// `defaultButton` is the one that has the focus and that Return presses; one that the box has not stands for that of
/// Escape. `handler` may be empty; what it throws comes out of here. When the application ends the box, the answer is
/// that of Escape and the handler is not called. The last two are for boxes with a check box, which there are none of:
/// 0. `supplier` as in every dialog. Main thread.
ZELUI_API Button Messagebox(const drawbot::SupplierInterface* supplier, const zelcore::ustring& title,
                            const zelcore::ustring& message, int buttons, Button defaultButton, Icon icon, HWND parent,
                            const ButtonHandler& handler, int checkBoxText, int checkBoxValue);

/// Modal boxes with one OK button over the window `parent` (null: over the application); they return when the user has
/// dismissed them. `supplier` as in every dialog. Main thread.
ZELUI_API void ShowNote(const drawbot::SupplierInterface* supplier, const zelcore::ustring& title,
                        const zelcore::ustring& message, HWND parent);
ZELUI_API void ShowCaution(const drawbot::SupplierInterface* supplier, const zelcore::ustring& title,
                           const zelcore::ustring& message, HWND parent);

}  // namespace messagebox
}  // namespace dialogs
}  // namespace zelui
