#include "PopupPeer.h"

#include <QKeyEvent>

#include "CallOut.h"
#include "ControlText.h"
#include "PlainText.h"

namespace zelui {
namespace controls {

UI_Popup::PopupPeer::PopupPeer(UI_Popup& popup) : ControlPeer(popup) {}

UI_Popup::PopupPeer::~PopupPeer() {
    if (GetWidget() != nullptr && GetPopupWidget().IsOpen()) GetPopupWidget().hidePopup();
}

bool UI_Popup::PopupPeer::CanBeReleased() const {
    return ControlPeer::CanBeReleased() && (GetWidget() == nullptr || !GetPopupWidget().IsOpen());
}

QWidget* UI_Popup::PopupPeer::MakeControl(QWidget& parent) {
    PopupWidget* const widget = new PopupWidget(parent);
    QObject::connect(widget, &QComboBox::activated, this, [this](int index) { OnActivated(index); });
    return widget;
}

void UI_Popup::PopupPeer::OnSync() {
    ControlPeer::OnSync();
    const UI_Popup& popup = GetPopup();
    QStringList items;
    items.reserve(popup.GetItemCount());
    for (const zelcore::ustring& item : popup.mItems) items.append(ToControlText(item));
    GetPopupWidget().SetItems(items);
    std::optional<QString> shownText;
    if (popup.mShownText) shownText = ToControlText(*popup.mShownText);
    GetPopupWidget().SetChoice(items.isEmpty() ? -1 : popup.mValue, shownText);
}

QString UI_Popup::PopupPeer::GetOwnToolTip() const {
    return GetPopupWidget().IsElided() ? ToToolTip(ToControlText(GetPopup().GetValueString())) : QString();
}

// The last are those that choose by the beginning of an item's text.
bool UI_Popup::PopupPeer::UsesKey(const QKeyEvent& key) const {
    switch (key.key()) {
        case Qt::Key_Up:
        case Qt::Key_Down:
        case Qt::Key_PageUp:
        case Qt::Key_PageDown:
        case Qt::Key_Home:
        case Qt::Key_End:
        case Qt::Key_F4:
        case Qt::Key_Space:
            return IsPlain(key);
        default:
            return IsPlain(key) && !key.text().isEmpty() && key.text().at(0).isPrint();
    }
}

// A popup that the pointer happens to stand on must not change when the list round it is scrolled.
bool UI_Popup::PopupPeer::OnEvent(QEvent& event) {
    if (event.type() != QEvent::Wheel) return false;
    event.ignore();
    return true;
}

void UI_Popup::PopupPeer::OnActivated(int index) {
    const boost::intrusive_ptr<UI_Popup> popup(&GetPopup());
    CallOut("A popup's handler", [&popup, index] { popup->TakeUserChoice(index); });
}

}  // namespace controls
}  // namespace zelui
