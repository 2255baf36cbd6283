#include "ButtonPeer.h"

#include <QAbstractButton>
#include <QKeyEvent>

#include "ControlText.h"
#include "PlainText.h"

namespace zelui {
namespace controls {

ButtonPeer::ButtonPeer(UI_Button& button) : ControlPeer(button) {}

QAbstractButton& ButtonPeer::GetQtButton() const { return static_cast<QAbstractButton&>(*GetWidget()); }

QString ButtonPeer::GetText() const { return ToControlText(static_cast<const UI_Button&>(GetNode()).GetText()); }

bool ButtonPeer::CanBeReleased() const {
    return ControlPeer::CanBeReleased() && (GetWidget() == nullptr || !GetQtButton().isDown());
}

void ButtonPeer::OnSync() {
    ControlPeer::OnSync();
    QAbstractButton& button = GetQtButton();
    const QString fits = button.fontMetrics().elidedText(GetText(), Qt::ElideRight, GetTextWidth());
    // Setting the same text again would have the widget painted again.
    if (button.text() != ToButtonText(fits)) button.setText(ToButtonText(fits));
}

QString ButtonPeer::GetOwnAccessibleName() const {
    const QString text = GetText();
    return text.trimmed().isEmpty() ? ControlPeer::GetOwnAccessibleName() : text;
}

QString ButtonPeer::GetOwnToolTip() const {
    return GetQtButton().text() == ToButtonText(GetText()) ? QString() : ToToolTip(GetText());
}

bool ButtonPeer::UsesKey(const QKeyEvent& key) const { return key.key() == Qt::Key_Space && IsPlain(key); }

}  // namespace controls
}  // namespace zelui
