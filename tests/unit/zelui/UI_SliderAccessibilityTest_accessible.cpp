#include <limits>

#include "AccessibleNode.h"
#include "SliderStage.h"

namespace zeltests {
namespace {

const double kNaN = std::numeric_limits<double>::quiet_NaN();

/// A slider as screen readers have it.
class UI_SliderAccessibilityTest : public SliderStage {};

}  // namespace

TEST_F(UI_SliderAccessibilityTest, ScreenReadersKnowTheValueInTheProgramsUnits) {
    mSlider->SetValueRange({20, 20000});
    mSlider->SetValue(440.5);
    QAccessibleInterface* const accessible = GetAccessible(*mSlider);
    EXPECT_EQ(accessible->role(), QAccessible::Slider);
    ASSERT_NE(accessible->valueInterface(), nullptr);
    EXPECT_EQ(accessible->valueInterface()->currentValue().toDouble(), 440.5);
    EXPECT_EQ(accessible->valueInterface()->minimumValue().toDouble(), 20);
    EXPECT_EQ(accessible->valueInterface()->maximumValue().toDouble(), 20000);
    EXPECT_GT(accessible->valueInterface()->minimumStepSize().toDouble(), 0);
}

TEST_F(UI_SliderAccessibilityTest, AValueFromAScreenReaderIsAWholeGesture) {
    QAccessibleValueInterface* const value = GetAccessible(*mSlider)->valueInterface();
    value->setCurrentValue(0.125);
    EXPECT_EQ(mSlider->GetValue(), 0.125);
    EXPECT_EQ(mTold, (Told{"start", "change", "end", "changed"}));
    mTold.clear();
    value->setCurrentValue(17);
    EXPECT_EQ(mSlider->GetValue(), 1.0);
    mTold.clear();
    value->setCurrentValue(QVariant("no number"));
    value->setCurrentValue(kNaN);
    EXPECT_EQ(mSlider->GetValue(), 1.0);
    EXPECT_EQ(mTold, (Told{"start", "cancel"}));
    mTold.clear();
    mSlider->UI_SetDisabled(true);
    value->setCurrentValue(0.5);
    EXPECT_TRUE(mTold.empty());
}

}  // namespace zeltests
