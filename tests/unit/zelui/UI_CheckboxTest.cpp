#include <algorithm>
#include <gtest/gtest.h>
#include <QCheckBox>
#include <QImage>
#include <QStyle>
#include <QStyleOptionButton>
#include <stdexcept>
#include <zelui/Theme.h>
#include <zelui/UI_Checkbox.h>
#include <zelui/UI_StaticText.h>

#include "../../../frameworks/zelui/src/ColorContrast.h"
#include "ControlStage.h"

namespace zeltests {
namespace {

using zelui::controls::UI_Button;
using zelui::controls::UI_ButtonChangedMessage;
using zelui::controls::UI_Checkbox;
using zelui::ui::Theme;

class UI_CheckboxTest : public ::testing::Test {
protected:
    UI_CheckboxTest() : mBox(mStage.Add(new UI_Checkbox, {10, 10, 200, 14})) {
        mBox->NotifyWhenChanged(Handler<UI_Button::ButtonChangedFunction>(
            [this](UI_ButtonChangedMessage*) { mTold.push_back(mBox->GetValue()); }));
    }

    QCheckBox* GetQtBox() const { return ControlStage::GetWidget<QCheckBox>(*mBox); }
    void Click() { QTest::mouseClick(GetQtBox(), Qt::LeftButton, Qt::NoModifier, QPoint(6, 7)); }

    ControlStage mStage;
    boost::intrusive_ptr<UI_Checkbox> mBox;
    std::vector<int> mTold;
};

}  // namespace

TEST_F(UI_CheckboxTest, AClickTogglesAndTellsWithTheNewValue) {
    Click();
    EXPECT_TRUE(mBox->IsChecked());
    Click();
    EXPECT_FALSE(mBox->IsChecked());
    EXPECT_EQ(mTold, (std::vector<int>{1, 0}));
}

TEST_F(UI_CheckboxTest, SpaceTogglesIt) {
    ASSERT_TRUE(mBox->UI_GainKeyboardFocus(zelui::ui::kFocusByProgram));
    QTest::keyClick(GetQtBox(), Qt::Key_Space);
    EXPECT_EQ(mTold, (std::vector<int>{1}));
}

TEST_F(UI_CheckboxTest, TheProgramsOwnChangesTellNobody) {
    mBox->SetChecked(true);
    EXPECT_TRUE(GetQtBox()->isChecked());
    mBox->SetValue(0);
    EXPECT_FALSE(GetQtBox()->isChecked());
    mBox->SetValue(1);
    mBox->SetValue(2);
    EXPECT_EQ(mBox->GetValue(), 0) << "only 1 is checked";
    EXPECT_TRUE(mTold.empty());
}

TEST_F(UI_CheckboxTest, TheHandlerMayTakeTheUsersChoiceBack) {
    mBox->NotifyWhenChanged(
        Handler<UI_Button::ButtonChangedFunction>([this](UI_ButtonChangedMessage*) { mBox->SetChecked(false); }));
    Click();
    EXPECT_FALSE(mBox->IsChecked());
    EXPECT_FALSE(GetQtBox()->isChecked());
}

TEST_F(UI_CheckboxTest, ADisabledOneCannotBeToggled) {
    mBox->UI_SetDisabled(true);
    Click();
    EXPECT_FALSE(mBox->IsChecked());
    EXPECT_TRUE(mTold.empty());
}

TEST_F(UI_CheckboxTest, WithoutATextItIsNamedByTheTextBeforeIt) {
    const auto label = mStage.Add(new zelui::controls::UI_StaticText, {10, 40, 100, 20});
    const auto box = mStage.Add(new UI_Checkbox, {120, 40, 100, 14});
    label->SetLabelText(U("Bypass"));
    EXPECT_EQ(GetAccessibleName(*box), "Bypass");
    box->SetText(U("On"));
    EXPECT_EQ(GetAccessibleName(*box), "On");
}

TEST_F(UI_CheckboxTest, AnAmpersandIsShownAndLongTextIsShortened) {
    mBox->SetText(U("Rescan & enable"));
    EXPECT_EQ(GetQtBox()->text(), "Rescan && enable");
    EXPECT_EQ(GetQtBox()->toolTip(), "");
    mBox->UI_SetLocalRectF({10, 10, 60, 14});
    EXPECT_TRUE(GetQtBox()->text().endsWith(QChar(0x2026)));
    EXPECT_TRUE(GetQtBox()->toolTip().contains("Rescan &amp; enable"));
    EXPECT_EQ(GetAccessibleName(*mBox), "Rescan & enable");
}

TEST_F(UI_CheckboxTest, NothingIsCutAtFourteenUnits) {
    mBox->SetText(U("Egjpq"));
    QStyleOptionButton option;
    option.initFrom(GetQtBox());
    option.text = GetQtBox()->text();
    const QStyle* const style = GetQtBox()->style();
    EXPECT_GE(style->subElementRect(QStyle::SE_CheckBoxContents, &option, GetQtBox()).height(),
              GetQtBox()->fontMetrics().height());
    const QRect box = style->subElementRect(QStyle::SE_CheckBoxIndicator, &option, GetQtBox());
    EXPECT_TRUE(GetQtBox()->rect().contains(box));
}

TEST_F(UI_CheckboxTest, TheFocusCanBeSeenWithAndWithoutText) {
    for (const char* const text : {"", "Rescan"}) {
        mBox->SetText(U(text));
        mStage.GetArea().setFocus();
        const QImage without = GetQtBox()->grab().toImage();
        TabTo(*mBox);
        EXPECT_NE(GetQtBox()->grab().toImage(), without) << text;
    }
}

TEST_F(UI_CheckboxTest, ComesBackTheSameAfterScrolling) {
    mBox->SetText(U("Rescan"));
    mBox->SetChecked(true);
    mStage.ScrollAwayAndBack(*mBox);
    EXPECT_TRUE(GetQtBox()->isChecked());
    EXPECT_EQ(GetQtBox()->text(), "Rescan");
    EXPECT_TRUE(mTold.empty());
    Click();
    EXPECT_EQ(mTold, (std::vector<int>{0}));
}

TEST_F(UI_CheckboxTest, TheHandlerMayTakeAllAway) {
    mBox->NotifyWhenChanged(Handler<UI_Button::ButtonChangedFunction>([this](UI_ButtonChangedMessage* message) {
        mTold.push_back(static_cast<UI_Checkbox&>(*message->GetControl()).GetValue());
        mStage.GetRoot()->ChildRemove(mBox);
        mBox.reset();
    }));
    Click();
    EXPECT_EQ(mTold, (std::vector<int>{1}));
    QCoreApplication::processEvents();
}

TEST_F(UI_CheckboxTest, AnExceptionOfTheHandlerLeavesBoxAndWidgetTheSame) {
    mBox->NotifyWhenChanged(Handler<UI_Button::ButtonChangedFunction>([](UI_ButtonChangedMessage*) { throw 1; }));
    QTest::ignoreMessage(QtWarningMsg, "A check box's handler threw an exception");
    Click();
    EXPECT_TRUE(mBox->IsChecked());
    EXPECT_TRUE(GetQtBox()->isChecked());
}

TEST_F(UI_CheckboxTest, TheBoxCanBeSeenUncheckedAndDisabledOnEveryTheme) {
    for (const Theme::Choice choice : {Theme::kDark, Theme::kLight}) {
        Theme::Get().Choose(choice);
        for (const bool isDisabled : {false, true}) {
            mBox->UI_SetDisabled(isDisabled);
            const QImage picture = GetQtBox()->grab(QRect(0, 0, 14, 14)).toImage();
            const QColor background = GetQtBox()->palette().color(QPalette::Active, QPalette::Window);
            double contrast = 1;
            for (int x = 0; x < picture.width(); ++x)
                contrast = std::max(contrast, zelui::GetContrast(picture.pixelColor(x, 7), background));
            EXPECT_GE(contrast, isDisabled ? 1.9 : 2.9) << choice << " " << isDisabled;
        }
    }
    Theme::Get().Choose(Theme::kSystem);
}

}  // namespace zeltests
