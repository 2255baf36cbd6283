#pragma once

#include <QPointer>

#include <zelui/UI_ProgressDialog.h>

#include "UI_DialogPeer.h"

class QPushButton;

namespace zelui {

class ElidedLabel;
class ProgressBar;

namespace dialogs {

/// The Qt side of the progress dialog. After the application has gone it does nothing.
class UI_ProgressDialog::ProgressPeer final : public ui::UI_Dialog::Peer {
public:
    ProgressPeer(const QString& title, HWND parent, bool indeterminate, bool cancellable);

    void SetProgress(unsigned long current, unsigned long total, const QString& text);
    void SetExtraText(const QString& text);

private:
    void BuildWindow(const QString& title);
    void AddCancelButton();

    QPointer<ElidedLabel> mExtraText;
    QPointer<ProgressBar> mBar;
};

}  // namespace dialogs
}  // namespace zelui
