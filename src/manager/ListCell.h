#pragma once

#include <boost/intrusive_ptr.hpp>
#include <zelcore/Geometry.h>
#include <zelcore/ustring.h>
#include <zelui/Drawbot.h>
#include <zelui/SupplierInterface.h>

namespace zelaudiofilterhostui {

/// How the dialog's lists show a text in a cell: one line in the toolkit's own font, in the middle of the cell's
/// height, in the colour of list text. One for a whole list, as it keeps the font.
class ListCell {
public:
    /// How far in the text begins, and how much of the cell it leaves free; display units.
    static constexpr float kTextInset = 6.0f;

    explicit ListCell(const zelui::drawbot::SupplierInterface& supplier);

    /// Draws nothing outside the cell; a text that does not fit is shortened.
    void Draw(zelui::drawbot::Drawbot& drawbot, const zelcore::ustring& text, const zelcore::geom::RectF& cell,
              zelui::drawbot::TruncateMode truncation, bool isHighlighted) const;
    /// How wide a text is, without its inset; 0 when there is no font.
    float Measure(const zelcore::ustring& text) const;

private:
    const boost::intrusive_ptr<zelui::drawbot::Font> mFont;
};

}  // namespace zelaudiofilterhostui
