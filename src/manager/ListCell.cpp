#include "manager/ListCell.h"

#include <zelui/Theme.h>

namespace zelaudiofilterhostui {

using zelui::drawbot::Font;
using zelui::drawbot::SupplierInterface;

namespace {

constexpr float kFontSize = 11.0f;

boost::intrusive_ptr<Font> MakeFont(const SupplierInterface& supplier) {
    return supplier.NewFont(zelui::ui::GetFontName(0), SupplierInterface::kFontPlain, kFontSize);
}

}  // namespace

void DrawCellText(zelui::drawbot::Drawbot& drawbot, const SupplierInterface& supplier, const zelcore::ustring& text,
                  const zelcore::geom::RectF& cell, zelui::drawbot::TruncateMode truncation, bool isHighlighted) {
    const boost::intrusive_ptr<Font> font = MakeFont(supplier);
    if (!font) return;
    const zelcore::ustring shown = zelui::drawbot::TruncateString(text, *font, cell.width - kCellTextInset, truncation);
    const float height = font->GetAscent() + font->GetDescent();
    const float baseline = cell.top + (cell.height - height) * 0.5f + font->GetAscent();
    const int color = isHighlighted ? zelui::ui::kColorListTextHighlighted : zelui::ui::kColorListText;
    drawbot.PushClip(cell);
    drawbot.DrawString(shown, *font, {cell.left + kCellTextInset, baseline}, zelui::ui::GetColor(color));
    drawbot.PopClip();
}

float MeasureCellText(const SupplierInterface& supplier, const zelcore::ustring& text) {
    const boost::intrusive_ptr<Font> font = MakeFont(supplier);
    return font ? font->GetStringWidth(text) : 0.0f;
}

}  // namespace zelaudiofilterhostui
