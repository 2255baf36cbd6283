#include "manager/ListCell.h"

#include <zelui/Theme.h>

namespace zelaudiofilterhostui {

using zelui::drawbot::SupplierInterface;

namespace {

constexpr float kFontSize = 11.0f;

}  // namespace

ListCell::ListCell(const SupplierInterface& supplier)
    : mFont(supplier.NewFont(zelui::ui::GetFontName(0), SupplierInterface::kFontPlain, kFontSize)) {}

void ListCell::Draw(zelui::drawbot::Drawbot& drawbot, const zelcore::ustring& text, const zelcore::geom::RectF& cell,
                    zelui::drawbot::TruncateMode truncation, bool isHighlighted) const {
    if (!mFont) return;
    const zelcore::ustring shown = zelui::drawbot::TruncateString(text, *mFont, cell.width - kTextInset, truncation);
    const float height = mFont->GetAscent() + mFont->GetDescent();
    const float baseline = cell.top + (cell.height - height) * 0.5f + mFont->GetAscent();
    const int color = isHighlighted ? zelui::ui::kColorListTextHighlighted : zelui::ui::kColorListText;
    drawbot.PushClip(cell);
    drawbot.DrawString(shown, *mFont, {cell.left + kTextInset, baseline}, zelui::ui::GetColor(color));
    drawbot.PopClip();
}

float ListCell::Measure(const zelcore::ustring& text) const { return mFont ? mFont->GetStringWidth(text) : 0.0f; }

}  // namespace zelaudiofilterhostui
