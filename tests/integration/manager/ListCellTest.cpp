#include "manager/ListCell.h"

#include <gtest/gtest.h>
#include <zelcore/Utf.h>
#include <zelui/Theme.h>

#include "RecordingDrawbot.h"

namespace zeltests {

using zelcore::geom::RectF;
using zelcore::utility::UTF8to16;
using zelui::drawbot::SupplierInterface;
using zelui::drawbot::TruncateMode;

namespace {

const RectF kCell = {20, 40, 90, 21};
const char kLong[] = "A name that is far longer than the cell";

/// A cell, drawn on a surface that writes down what is drawn on it.
class ListCellTest : public testing::Test {
protected:
    void Draw(const char* text, TruncateMode truncation, bool isHighlighted = false) {
        zelaudiofilterhostui::ListCell(mSupplier).Draw(*mDrawbot, UTF8to16(text), kCell, truncation, isHighlighted);
        ASSERT_EQ(mDrawbot->strings.size(), 1u);
    }
    zelcore::ustring Truncate(const char* text, int mode) const {
        return zelui::drawbot::TruncateString(UTF8to16(text), *mFont, kCell.width - 6.0f,
                                              static_cast<TruncateMode>(mode));
    }

    const SupplierInterface& mSupplier = *SupplierInterface::GetDefault();
    const boost::intrusive_ptr<zelui::drawbot::Font> mFont =
        mSupplier.NewFont(zelui::ui::GetFontName(0), SupplierInterface::kFontPlain, 11.0f);
    const boost::intrusive_ptr<RecordingDrawbot> mDrawbot{new RecordingDrawbot};
};

}  // namespace

TEST_F(ListCellTest, TheTextBeginsSixUnitsInAndStandsInTheMiddleOfTheHeight) {
    Draw("Text", zelui::drawbot::kTruncateEnd);
    const RecordingDrawbot::String& string = mDrawbot->strings[0];
    EXPECT_EQ(string.text, UTF8to16("Text"));
    EXPECT_EQ(string.origin.x, 26.0f);
    EXPECT_FLOAT_EQ(string.origin.y - mFont->GetAscent() - kCell.top,
                    kCell.Bottom() - string.origin.y - mFont->GetDescent());
    EXPECT_EQ(string.width, mFont->GetStringWidth(UTF8to16("Text")));
}

TEST_F(ListCellTest, NothingIsDrawnOutsideTheCell) {
    Draw(kLong, zelui::drawbot::kTruncateNone);
    EXPECT_EQ(mDrawbot->strings[0].text, UTF8to16(kLong));
    ASSERT_EQ(mDrawbot->strings[0].clips.size(), 1u);
    EXPECT_EQ(mDrawbot->strings[0].clips[0], kCell);
    EXPECT_TRUE(mDrawbot->clips.empty());
}

TEST_F(ListCellTest, ModeTwoShortensAtTheEndAndModeThreeInTheMiddle) {
    ASSERT_NE(Truncate(kLong, 2), Truncate(kLong, 3));
    Draw(kLong, zelui::drawbot::kTruncateEnd);
    EXPECT_EQ(mDrawbot->strings[0].text, Truncate(kLong, 2));
    mDrawbot->strings.clear();
    Draw(kLong, zelui::drawbot::kTruncateMiddle);
    EXPECT_EQ(mDrawbot->strings[0].text, Truncate(kLong, 3));
}

TEST_F(ListCellTest, TheColourIsNumber282AndHighlightedNumber283) {
    ASSERT_NE(zelui::ui::GetColor(282), zelui::ui::GetColor(283));
    Draw("Text", zelui::drawbot::kTruncateEnd);
    EXPECT_EQ(mDrawbot->strings[0].color, zelui::ui::GetColor(282));
    mDrawbot->strings.clear();
    Draw("Text", zelui::drawbot::kTruncateEnd, true);
    EXPECT_EQ(mDrawbot->strings[0].color, zelui::ui::GetColor(283));
}

TEST_F(ListCellTest, ATextIsAsWideAsInTheFontThatItIsDrawnIn) {
    EXPECT_EQ(zelaudiofilterhostui::ListCell(mSupplier).Measure(UTF8to16(kLong)),
              mFont->GetStringWidth(UTF8to16(kLong)));
}

}  // namespace zeltests
