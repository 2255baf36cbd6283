#include "ProgressPeer.h"

#include <algorithm>

#include <QDialog>
#include <QDialogButtonBox>
#include <QLocale>
#include <QPushButton>
#include <QVBoxLayout>

#include <zelcore/Localizer.h>
#include <zelcore/StringUtils.h>
#include <zelui/QtAccessibility.h>
#include <zelui/QtBridge.h>

#include "ElidedLabel.h"
#include "PlainText.h"
#include "ProgressBar.h"

namespace zelui {
namespace dialogs {

namespace {

// Wide enough for most plug-in names; in characters too, for people who work with large type.
const int kMinimumWidth = 420;
const int kMinimumCharacters = 60;

QString FormatNumbers(unsigned long current, unsigned long total) {
    const QLocale locale;
    return qt::ToQString(
        zelcore::utility::FillPlaceholders(zelcore::config::Localize("$$$/zelui/ProgressNumbers=@0 of @1"),
                                           {qt::FromQString(locale.toString(static_cast<qulonglong>(current))),
                                            qt::FromQString(locale.toString(static_cast<qulonglong>(total)))}));
}

}  // namespace

UI_ProgressDialog::ProgressPeer::ProgressPeer(const QString& title, HWND parent, bool indeterminate, bool cancellable)
    : Peer(parent, cancellable) {
    BuildWindow(title);
    if (cancellable) AddCancelButton();
    if (indeterminate)
        mBar->SetBusy();
    else
        mBar->SetCount(0, 1);
}

void UI_ProgressDialog::ProgressPeer::BuildWindow(const QString& title) {
    QDialog* const window = GetWindow();
    window->setObjectName(QStringLiteral("ProgressDialog"));
    window->setWindowTitle(ToWindowTitle(title));
    mExtraText = new ElidedLabel(window);
    mExtraText->setObjectName(QStringLiteral("ProgressExtraText"));
    mBar = new ProgressBar(window);
    mBar->setObjectName(QStringLiteral("ProgressBar"));
    qt::SetAccessibleName(*mBar, ToOneLine(title, 200));
    mBar->setMinimumWidth(std::max(kMinimumWidth, window->fontMetrics().averageCharWidth() * kMinimumCharacters));
    QVBoxLayout* const layout = new QVBoxLayout(window);
    layout->addWidget(mExtraText);
    layout->addWidget(mBar);
    // People may make it wider to read a long name, never higher.
    layout->setSizeConstraint(QLayout::SetMinAndMaxSize);
}

void UI_ProgressDialog::ProgressPeer::AddCancelButton() {
    QDialogButtonBox* const buttons = new QDialogButtonBox(QDialogButtonBox::Cancel, GetWindow());
    QPushButton* const cancel = buttons->button(QDialogButtonBox::Cancel);
    cancel->setObjectName(QStringLiteral("CancelButton"));
    cancel->setText(qt::ToQString(zelcore::config::Localize("$$$/zelui/Cancel=Cancel")));
    // Enter, pressed for the window before, must not throw the work away; Escape and Space do what they say.
    cancel->setAutoDefault(false);
    QObject::connect(buttons, &QDialogButtonBox::rejected, GetWindow(), &QDialog::reject);
    QBoxLayout* const layout = static_cast<QBoxLayout*>(GetWindow()->layout());
    layout->addSpacing(layout->spacing());
    layout->addWidget(buttons);
}

void UI_ProgressDialog::ProgressPeer::SetProgress(unsigned long current, unsigned long total, const QString& text) {
    if (!mBar) return;
    if (total == 0) {
        mBar->SetBusy();
        mBar->SetBarText(text);
        return;
    }
    mBar->SetCount(current, total);
    mBar->SetBarText(text.isEmpty() ? FormatNumbers(current, total) : text);
}

void UI_ProgressDialog::ProgressPeer::SetExtraText(const QString& text) {
    if (mExtraText) mExtraText->SetFullText(text);
}

}  // namespace dialogs
}  // namespace zelui
