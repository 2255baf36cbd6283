#include <gtest/gtest.h>
#include <zelui/UI_Checkbox.h>

#include "AccessibleNode.h"
#include "ControlStage.h"

namespace zeltests {
namespace {

/// A check box as screen readers have it.
class UI_CheckboxAccessibilityTest : public ::testing::Test {
protected:
    ControlStage mStage;
    const boost::intrusive_ptr<zelui::controls::UI_Checkbox> mBox =
        mStage.Add(new zelui::controls::UI_Checkbox, {10, 10, 160, 14});
};

}  // namespace

TEST_F(UI_CheckboxAccessibilityTest, ScreenReadersKnowItsStateAndCanToggleIt) {
    int told = 0;
    mBox->NotifyWhenChanged(Handler<zelui::controls::UI_Button::ButtonChangedFunction>(
        [&told](zelui::controls::UI_ButtonChangedMessage*) { ++told; }));
    EXPECT_TRUE(GetAccessible(*mBox)->state().checkable);
    EXPECT_FALSE(GetAccessible(*mBox)->state().checked);
    GetAccessible(*mBox)->actionInterface()->doAction(QAccessibleActionInterface::toggleAction());
    EXPECT_TRUE(GetAccessible(*mBox)->state().checked);
    EXPECT_TRUE(mBox->IsChecked());
    EXPECT_EQ(told, 1);
}

TEST_F(UI_CheckboxAccessibilityTest, ADisabledOneIsReadAsDisabled) {
    EXPECT_FALSE(GetAccessible(*mBox)->state().disabled);
    mBox->UI_SetDisabled(true);
    EXPECT_TRUE(GetAccessible(*mBox)->state().disabled);
}

}  // namespace zeltests
