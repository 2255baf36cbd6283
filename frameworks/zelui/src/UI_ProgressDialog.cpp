#include <algorithm>

#include <zelui/QtBridge.h>
#include <zelui/UI_ProgressDialog.h>

#include "ProgressPeer.h"

namespace zelui {
namespace dialogs {

// The supplier is not asked: a progress dialog is made of the platform's own controls, which draw themselves.
UI_ProgressDialog::UI_ProgressDialog(const drawbot::SupplierInterface*, const zelcore::ustring& title,
                                     const zelcore::ustring& extraText, HWND parent, bool indeterminate,
                                     bool cancellable)
    : UI_Dialog(std::make_unique<ProgressPeer>(qt::ToQString(title), parent, indeterminate, cancellable)) {
    SetExtraText(extraText);
}

UI_ProgressDialog::~UI_ProgressDialog() = default;

void UI_ProgressDialog::SetProgress(unsigned long current, unsigned long total, const zelcore::ustring& text) {
    const unsigned long shown = total == 0 ? current : std::min(current, total);
    GetProgressPeer().SetProgress(shown, total, qt::ToQString(text));
    // Last, and with a copy, as a listener may let go of the dialog.
    const zelcore::ustring extraText = mExtraText;
    GetProgressSignal()(shown, total, extraText);
}

void UI_ProgressDialog::SetExtraText(const zelcore::ustring& text) {
    mExtraText = text;
    GetProgressPeer().SetExtraText(qt::ToQString(text));
}

UI_ProgressDialog::ProgressSignal& UI_ProgressDialog::GetProgressSignal() {
    static ProgressSignal signal;
    return signal;
}

UI_ProgressDialog::ProgressPeer& UI_ProgressDialog::GetProgressPeer() const {
    return static_cast<ProgressPeer&>(GetPeer());
}

}  // namespace dialogs
}  // namespace zelui
