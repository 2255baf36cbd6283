#include <zelui/UI_Popup.h>

#include <algorithm>

#include <QApplication>
#include <QStyle>
#include <QStyleOptionComboBox>

#include "ControlText.h"
#include "PopupPeer.h"

namespace zelui {
namespace controls {

namespace {

// The label stands one unit inside the field on both sides.
constexpr int kLabelMargins = 2;

}  // namespace

UI_Popup::UI_Popup(PopupType type, bool tellsSameChoice)
    : UI_ControlView(true), mValue(0), mType(type), mTellsSameChoice(tellsSameChoice) {}

UI_Popup::~UI_Popup() = default;

int UI_Popup::AddItem(const zelcore::ustring& text) {
    mItems.push_back(text);
    UI_SyncPeer();
    return GetItemCount() - 1;
}

void UI_Popup::RemoveItem(int index) {
    if (index < 0 || index >= GetItemCount()) return;
    mItems.erase(mItems.begin() + index);
    if (index == mValue) mValue = 0;
    if (index < mValue) --mValue;
    UI_SyncPeer();
}

void UI_Popup::RemoveAllItems() {
    mItems.clear();
    mValue = 0;
    UI_SyncPeer();
}

zelcore::ustring UI_Popup::GetItemText(int index) const {
    return index >= 0 && index < GetItemCount() ? mItems[static_cast<std::size_t>(index)] : zelcore::ustring();
}

void UI_Popup::SetValue(int index) {
    if (index < 0 || index >= GetItemCount()) return;
    mValue = index;
    mShownText.reset();
    UI_SyncPeer();
}

void UI_Popup::SetValueString(const zelcore::ustring& text, bool tell) {
    mShownText = text;
    UI_SyncPeer();
    if (tell) TellChanged();
}

zelcore::ustring UI_Popup::GetValueString() const { return mShownText ? *mShownText : GetItemText(mValue); }

void UI_Popup::TakeUserChoice(int index) {
    const bool exists = index >= 0 && index < GetItemCount();
    if (!exists || (index == mValue && !mTellsSameChoice)) {
        UI_SyncPeer();
        return;
    }
    mValue = index;
    mShownText.reset();
    UI_SyncPeer();
    TellChanged();
}

zelcore::geom::PointF UI_Popup::UI_GetRecommendedSize(const drawbot::Drawbot&) const {
    if (QApplication::instance() == nullptr) return {};
    const QFont font = GetControlFont();
    int width = mShownText ? GetNeededWidth(font, ToControlText(*mShownText)) : 0;
    for (const zelcore::ustring& item : mItems) width = std::max(width, GetNeededWidth(font, ToControlText(item)));
    QStyleOptionComboBox option;
    option.fontMetrics = QFontMetrics(font);
    option.editable = false;
    QStyle* const style = QApplication::style();
    const QSize contents(width + kLabelMargins, option.fontMetrics.height());
    QSize size = style->sizeFromContents(QStyle::CT_ComboBox, &option, contents, nullptr);
    option.rect = QRect(QPoint(0, 0), size);
    const QSize room =
        style->subControlRect(QStyle::CC_ComboBox, &option, QStyle::SC_ComboBoxEditField, nullptr).size();
    size += (contents - room).expandedTo(QSize(0, 0));
    return {static_cast<float>(size.width()), static_cast<float>(size.height())};
}

std::unique_ptr<ui::UI_Node::Peer> UI_Popup::UI_MakePeer() { return std::make_unique<PopupPeer>(*this); }

}  // namespace controls
}  // namespace zelui
