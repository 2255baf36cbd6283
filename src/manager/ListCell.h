#pragma once

#include <zelcore/Geometry.h>
#include <zelcore/ustring.h>
#include <zelui/Drawbot.h>
#include <zelui/SupplierInterface.h>

namespace zelaudiofilterhostui {

/// How far in a cell's text begins, and how much of the cell it leaves free; display units.
constexpr float kCellTextInset = 6.0f;

/// Draws one line of text in a cell, as the dialog's lists do: in the toolkit's own font, in the middle of the cell's
/// height, shortened where it does not fit, in the colour of list text.
void DrawCellText(zelui::drawbot::Drawbot& drawbot, const zelui::drawbot::SupplierInterface& supplier,
                  const zelcore::ustring& text, const zelcore::geom::RectF& cell,
                  zelui::drawbot::TruncateMode truncation, bool isHighlighted);

/// How wide a text is that DrawCellText draws, without its inset; 0 when there is no font.
float MeasureCellText(const zelui::drawbot::SupplierInterface& supplier, const zelcore::ustring& text);

}  // namespace zelaudiofilterhostui
