#include <gtest/gtest.h>
#include <QLabel>
#include <zelui/UI_StaticText.h>

#include "ControlStage.h"

namespace zeltests {
namespace {

using zelui::controls::UI_StaticText;

const char kLong[] = "A name that is much longer than the room that there is for it";

class UI_StaticTextTest : public ::testing::Test {
protected:
    UI_StaticTextTest() : mText(mStage.Add(new UI_StaticText, {10, 10, 100, 20})) {}

    QLabel* GetLabel() const { return ControlStage::GetWidget<QLabel>(*mText); }

    ControlStage mStage;
    boost::intrusive_ptr<UI_StaticText> mText;
};

/// The first and the last column, or row, of an image in which anything is painted on the background.
std::pair<int, int> FindInk(const QImage& image, bool columns) {
    const int length = columns ? image.width() : image.height();
    const int across = columns ? image.height() : image.width();
    std::pair<int, int> ink(-1, -1);
    for (int i = 0; i < length; ++i) {
        for (int j = 0; j < across; ++j) {
            if (image.pixel(columns ? i : j, columns ? j : i) == image.pixel(0, 0)) continue;
            if (ink.first < 0) ink.first = i;
            ink.second = i;
        }
    }
    return ink;
}

}  // namespace

TEST_F(UI_StaticTextTest, ShowsItsTextWithoutAToolTip) {
    mText->SetLabelText(U("Gain"));
    EXPECT_EQ(mText->GetValue(), U("Gain"));
    EXPECT_EQ(GetLabel()->text(), "Gain");
    EXPECT_EQ(GetLabel()->toolTip(), "");
    EXPECT_EQ(GetAccessibleName(*mText), "Gain");
    mText->SetValue(U("Pan"));
    EXPECT_EQ(GetLabel()->text(), "Pan");
}

TEST_F(UI_StaticTextTest, ALongTextIsShortenedAtItsEndHoweverItIsAligned) {
    mText->SetLabelText(U(kLong));
    for (const auto alignment :
         {zelui::controls::kAlignLeft, zelui::controls::kAlignCenter, zelui::controls::kAlignRight}) {
        mText->SetAlignment(alignment);
        EXPECT_TRUE(GetLabel()->text().startsWith("A name"));
        EXPECT_TRUE(GetLabel()->text().endsWith(QChar(0x2026)));
        EXPECT_LE(GetLabel()->fontMetrics().horizontalAdvance(GetLabel()->text()), 100);
    }
    EXPECT_TRUE(GetLabel()->toolTip().contains("much longer than"));
    EXPECT_EQ(GetAccessibleName(*mText), kLong);
}

TEST_F(UI_StaticTextTest, MoreRoomShowsAllAndTakesTheToolTipAway) {
    mText->SetLabelText(U(kLong));
    mText->UI_SetLocalRectF({10, 10, 370, 20});
    EXPECT_EQ(GetLabel()->text(), kLong);
    EXPECT_EQ(GetLabel()->toolTip(), "");
    mText->UI_SetLocalRectF({10, 10, 50, 20});
    EXPECT_NE(GetLabel()->text(), kLong);
    EXPECT_NE(GetLabel()->toolTip(), "");
}

TEST_F(UI_StaticTextTest, AToolTipThatWasSetWins) {
    mText->UI_SetToolTip(U("Said by the program"));
    mText->SetLabelText(U(kLong));
    EXPECT_TRUE(GetLabel()->toolTip().contains("Said by the program"));
    mText->UI_SetToolTip(zelcore::ustring());
    EXPECT_TRUE(GetLabel()->toolTip().contains("much longer than"));
}

TEST_F(UI_StaticTextTest, NothingInATextIsMarkupOrAShortcut) {
    mText->UI_SetLocalRectF({10, 10, 200, 20});
    mText->SetLabelText(U("<b>R&B</b> &amp;"));
    EXPECT_EQ(GetLabel()->text(), "<b>R&B</b> &amp;");
    EXPECT_EQ(GetLabel()->textFormat(), Qt::PlainText);
    mText->UI_SetLocalRectF({10, 10, 30, 20});
    EXPECT_TRUE(GetLabel()->toolTip().contains("&lt;b&gt;R&amp;B"));
}

TEST_F(UI_StaticTextTest, LineEndsAndControlCharactersAreBlanks) {
    mText->SetLabelText(U("one\ntwo\tthree"));
    EXPECT_EQ(GetLabel()->text(), "one two three");
    EXPECT_EQ(mText->GetValue(), U("one\ntwo\tthree"));
}

TEST_F(UI_StaticTextTest, AnEndlessTextIsBounded) {
    mText->SetLabelText(zelcore::ustring(3000000, 'x'));
    EXPECT_LT(GetAccessibleName(*mText).size(), 3000);
    EXPECT_LT(GetLabel()->toolTip().size(), 3000);
    EXPECT_EQ(mText->GetValue().size(), 3000000u);
}

TEST_F(UI_StaticTextTest, StandsAtTheSideThatItsAlignmentSaysInEveryLanguage) {
    mText->SetLabelText(U("mm"));
    for (const auto direction : {Qt::LeftToRight, Qt::RightToLeft}) {
        GetLabel()->setLayoutDirection(direction);
        mText->SetAlignment(zelui::controls::kAlignLeft);
        EXPECT_LT(FindInk(GetLabel()->grab().toImage(), true).second, 40);
        mText->SetAlignment(zelui::controls::kAlignRight);
        EXPECT_GT(FindInk(GetLabel()->grab().toImage(), true).first, 60);
        mText->SetAlignment(zelui::controls::kAlignCenter);
        EXPECT_GT(FindInk(GetLabel()->grab().toImage(), true).first, 30);
        EXPECT_LT(FindInk(GetLabel()->grab().toImage(), true).second, 70);
    }
}

TEST_F(UI_StaticTextTest, NothingOfTallLettersIsCut) {
    mText->SetLabelText(zelcore::utility::UTF8to16("\xC3\x85gjpq"));
    const std::pair<int, int> atTwenty = FindInk(GetLabel()->grab().toImage(), false);
    mText->UI_SetLocalRectF({10, 10, 100, 60});
    const std::pair<int, int> atSixty = FindInk(GetLabel()->grab().toImage(), false);
    EXPECT_EQ(atTwenty.second - atTwenty.first, atSixty.second - atSixty.first);
    EXPECT_GT(atTwenty.first, 0);
    EXPECT_LT(atTwenty.second, 19);
}

TEST_F(UI_StaticTextTest, ComesBackTheSameAfterScrolling) {
    mText->SetLabelText(U(kLong));
    mText->SetAlignment(zelui::controls::kAlignRight);
    const QString shown = GetLabel()->text();
    const QString toolTip = GetLabel()->toolTip();
    const QImage image = GetLabel()->grab().toImage();
    mStage.ScrollAwayAndBack(*mText);
    EXPECT_EQ(GetLabel()->text(), shown);
    EXPECT_EQ(GetLabel()->toolTip(), toolTip);
    EXPECT_EQ(GetLabel()->grab().toImage(), image);
}

TEST_F(UI_StaticTextTest, TextChangedOutOfViewIsShownWhenItComesBack) {
    mText->SetLabelText(U("before"));
    mStage.GetArea().verticalScrollBar()->setValue(19000);
    ASSERT_TRUE(ProcessUntil([this] { return GetLabel() == nullptr; }));
    mText->SetLabelText(U("after"));
    mStage.GetArea().verticalScrollBar()->setValue(0);
    ASSERT_TRUE(ProcessUntil([this] { return GetLabel() != nullptr; }));
    EXPECT_EQ(GetLabel()->text(), "after");
}

}  // namespace zeltests
