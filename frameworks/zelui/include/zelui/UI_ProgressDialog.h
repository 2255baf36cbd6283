#pragma once

#include <zelcore/Signals.h>

#include <zelui/SupplierInterface.h>
#include <zelui/UI_Dialog.h>

namespace zelui {
namespace dialogs {

/// A dialog with a progress bar, a line of text under the title and, where wanted, a Cancel button. Closing the window
/// or pressing Escape is the same as Cancel; without a Cancel button neither closes it.
class ZELUI_API UI_ProgressDialog : public ui::UI_Dialog {
public:
    /// Told the position, the total and the text of each step.
    typedef boost::signal<void(unsigned long current, unsigned long total, const zelcore::ustring& extraText)>
        ProgressSignal;

    /// `supplier` draws the dialog (null takes the screen's). `parent` is the window it belongs to, or null. With
    /// `indeterminate` the bar only shows that something goes on until the first SetProgress. `cancellable` gives it a
    /// Cancel button.
    UI_ProgressDialog(const drawbot::SupplierInterface* supplier, const zelcore::ustring& title,
                      const zelcore::ustring& extraText, HWND parent, bool indeterminate, bool cancellable);

    /// Shows `current` of `total` (a total of 0 shows that something goes on; a current above it counts as all). `text`
    /// stands beside the bar; empty shows the numbers.
    void SetProgress(unsigned long current, unsigned long total, const zelcore::ustring& text);
    /// Sets the line above the bar. A text too long for the window is shortened in its middle; the whole of it is in
    /// the tool tip and for screen readers.
    void SetExtraText(const zelcore::ustring& text);

    /// Fires for every SetProgress of every progress dialog, for hosts that show progress elsewhere too (a task bar, a
    /// terminal).
    static ProgressSignal& GetProgressSignal();

protected:
    ~UI_ProgressDialog() override;

private:
    class ProgressPeer;
    ProgressPeer& GetProgressPeer() const;
    zelcore::ustring mExtraText;
};

}  // namespace dialogs
}  // namespace zelui
