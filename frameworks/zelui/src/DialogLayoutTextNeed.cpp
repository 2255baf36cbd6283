#include <algorithm>
#include <QApplication>
#include <QFontMetrics>
#include <QStyle>
#include <QStyleOptionButton>

#include <zelui/SupplierInterface.h>
#include <zelui/UI_Checkbox.h>
#include <zelui/UI_Popup.h>
#include <zelui/UI_StaticText.h>
#include <zelui/UI_TextButton.h>

#include "ControlText.h"
#include "DialogLayoutGrowth.h"

namespace zelui {

namespace {

using zelcore::geom::PointF;

// Between a push button's text and its edges; less and letters would touch the frame.
const int kButtonMargins = 4;

float GetLineHeight() { return static_cast<float>(QFontMetrics(GetControlFont()).height()); }

int GetTextWidth(const zelcore::ustring& text) { return GetNeededWidth(GetControlFont(), ToControlText(text)); }

// The style's own height for a button is what looks well in a dialog with room; an archive may want it smaller.
PointF GetNeed(const controls::UI_TextButton& button) {
    const float size = controls::UI_ControlView::DefaultTextSize();
    const drawbot::SupplierInterface* const supplier = drawbot::SupplierInterface::GetDefault();
    const PointF recommended = controls::UI_TextButton::UI_GetRecommendedSize(supplier, button.GetText(), size);
    return {recommended.x, std::min(recommended.y, GetLineHeight() + kButtonMargins)};
}

PointF GetNeed(const controls::UI_Checkbox& checkbox) {
    const QRect probe(0, 0, 1000, 100);
    QStyleOptionButton option;
    option.fontMetrics = QFontMetrics(GetControlFont());
    option.rect = probe;
    const QStyle& style = *QApplication::style();
    const int beside = probe.width() - style.subElementRect(QStyle::SE_CheckBoxContents, &option).width();
    const int box = style.pixelMetric(QStyle::PM_IndicatorHeight, &option);
    return {static_cast<float>(beside + GetTextWidth(checkbox.GetText())),
            std::max(GetLineHeight(), static_cast<float>(box))};
}

PointF GetNeed(const controls::UI_StaticText& text) {
    return {static_cast<float>(GetTextWidth(text.GetValue())), GetLineHeight()};
}

PointF GetNeed(const controls::UI_Popup& popup) {
    const boost::intrusive_ptr<drawbot::Drawbot> drawbot =
        drawbot::SupplierInterface::GetDefault()->NewDrawbot(1, 1, 1);
    return drawbot ? PointF{popup.UI_GetRecommendedSize(*drawbot).x, GetLineHeight() + kButtonMargins} : PointF();
}

}  // namespace

PointF GetTextNeed(const ui::UI_Node& node) {
    if (QApplication::instance() == nullptr) return {};
    if (const auto* const button = dynamic_cast<const controls::UI_TextButton*>(&node)) return GetNeed(*button);
    if (const auto* const checkbox = dynamic_cast<const controls::UI_Checkbox*>(&node)) return GetNeed(*checkbox);
    if (const auto* const text = dynamic_cast<const controls::UI_StaticText*>(&node)) return GetNeed(*text);
    if (const auto* const popup = dynamic_cast<const controls::UI_Popup*>(&node)) return GetNeed(*popup);
    return {};
}

}  // namespace zelui
