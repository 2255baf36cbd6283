#include <gtest/gtest.h>
#include <zelui/UI_Checkbox.h>
#include <zelui/UI_Popup.h>
#include <zelui/UI_Slider.h>
#include <zelui/UI_StaticText.h>
#include <zelui/UI_TextButton.h>

#include "ControlStage.h"

namespace zeltests {
namespace {

using zelui::controls::UI_Button;
using zelui::controls::UI_Checkbox;
using zelui::controls::UI_ControlChangedMessage;
using zelui::controls::UI_ControlView;
using zelui::controls::UI_Popup;
using zelui::controls::UI_Slider;
using zelui::controls::UI_StaticText;
using zelui::controls::UI_TextButton;

typedef UI_ControlView::ChangedFunction ChangedFunction;

UI_Slider* MakeSlider() { return new UI_Slider(zelui::controls::kSliderHorizontal, false); }
UI_Popup* MakePopup() { return new UI_Popup(zelui::controls::kPopupChoice, false); }

}  // namespace

TEST(UI_ControlViewTest, TextsAreElevenUnitsHigh) {
    EXPECT_EQ(UI_ControlView::DefaultTextSize(), 11.0f);
    ControlStage stage;
    const auto text = stage.Add(new UI_StaticText, {0, 0, 100, 20});
    EXPECT_EQ(zelui::qt::GetWidget(*text)->font().pixelSize(), 11);
}

TEST(UI_ControlViewTest, OnlyControlsThatTakeKeysWantTheFocus) {
    EXPECT_FALSE(boost::intrusive_ptr<UI_ControlView>(new UI_StaticText)->UI_WantsKeyboardFocus());
    EXPECT_TRUE(boost::intrusive_ptr<UI_ControlView>(MakeSlider())->UI_WantsKeyboardFocus());
    EXPECT_TRUE(boost::intrusive_ptr<UI_ControlView>(MakePopup())->UI_WantsKeyboardFocus());
    EXPECT_TRUE(boost::intrusive_ptr<UI_ControlView>(new UI_TextButton)->UI_WantsKeyboardFocus());
    EXPECT_TRUE(boost::intrusive_ptr<UI_ControlView>(new UI_Checkbox)->UI_WantsKeyboardFocus());
}

TEST(UI_ControlViewTest, TheFocusComesByClickAndNeverByQtsOwnTab) {
    ControlStage stage;
    const auto popup = stage.Add(MakePopup(), {0, 0, 100, 20});
    const auto text = stage.Add(new UI_StaticText, {0, 30, 100, 20});
    EXPECT_EQ(zelui::qt::GetWidget(*popup)->focusPolicy(), Qt::ClickFocus);
    EXPECT_EQ(zelui::qt::GetWidget(*text)->focusPolicy(), Qt::NoFocus);
    popup->SetWantsKeyboardFocus(false);
    EXPECT_EQ(zelui::qt::GetWidget(*popup)->focusPolicy(), Qt::NoFocus);
}

TEST(UI_ControlViewTest, TabGoesThroughTheControlsInTheirOrder) {
    ControlStage stage;
    const auto last = stage.Add(new UI_Checkbox, {0, 60, 100, 20});
    const auto first = stage.Add(MakeSlider(), {0, 0, 100, 20});
    const auto unwanted = stage.Add(new UI_TextButton, {0, 30, 100, 20});
    unwanted->SetWantsKeyboardFocus(false);
    ASSERT_TRUE(last->UI_GainKeyboardFocus(zelui::ui::kFocusByProgram));
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
    EXPECT_TRUE(first->UI_HasKeyboardFocus(false));
}

TEST(UI_ControlViewTest, AControlIsNamedByTheTextBeforeIt) {
    ControlStage stage;
    const auto label = stage.Add(new UI_StaticText, {0, 0, 100, 20});
    const auto slider = stage.Add(MakeSlider(), {100, 0, 100, 20});
    const auto value = stage.Add(new UI_StaticText, {200, 0, 50, 20});
    const auto popup = stage.Add(MakePopup(), {250, 0, 100, 20});
    label->SetLabelText(U("Cutoff"));
    EXPECT_EQ(GetAccessibleName(*slider), "Cutoff");
    EXPECT_EQ(GetAccessibleName(*popup), "Cutoff") << "an empty text names nothing";
    value->SetLabelText(U("12 Hz"));
    EXPECT_EQ(GetAccessibleName(*popup), "12 Hz");
    EXPECT_EQ(GetAccessibleName(*slider), "Cutoff");
    slider->UI_SetAccessibleName(U("Cutoff of the filter"));
    EXPECT_EQ(GetAccessibleName(*slider), "Cutoff of the filter");
}

TEST(UI_ControlViewTest, AFunctionMayReplaceItselfAndIsCalledOutUnharmed) {
    ControlStage stage;
    const auto box = stage.Add(new UI_Checkbox, {0, 0, 100, 20});
    int first = 0;
    int second = 0;
    UI_ControlView& control = *box;
    control.NotifyWhenChanged(Handler<ChangedFunction>([&, text = std::string(100, 'x')](UI_ControlChangedMessage*) {
        control.NotifyWhenChanged(Handler<ChangedFunction>([&](UI_ControlChangedMessage*) { ++second; }));
        first += static_cast<int>(text.size());
    }));
    ControlStage::GetWidget<QAbstractButton>(*box)->click();
    ControlStage::GetWidget<QAbstractButton>(*box)->click();
    EXPECT_EQ(first, 100);
    EXPECT_EQ(second, 1);
}

TEST(UI_ControlViewTest, AnEmptyFunctionOrNoneIsHarmless) {
    ControlStage stage;
    const auto box = stage.Add(new UI_Checkbox, {0, 0, 100, 20});
    UI_ControlView& control = *box;
    control.NotifyWhenChanged(boost::make_shared<ChangedFunction>());
    ControlStage::GetWidget<QAbstractButton>(*box)->click();
    control.NotifyWhenChanged(boost::shared_ptr<ChangedFunction>());
    ControlStage::GetWidget<QAbstractButton>(*box)->click();
    EXPECT_EQ(box->GetValue(), 0);
}

TEST(UI_ControlViewTest, AllWorksWithoutAWindow) {
    const boost::intrusive_ptr<UI_Slider> slider(MakeSlider());
    slider->SetValue(0.25);
    const boost::intrusive_ptr<UI_Popup> popup(MakePopup());
    popup->AddItem(U("A"));
    const boost::intrusive_ptr<UI_StaticText> text(new UI_StaticText);
    text->SetLabelText(U("T"));
    EXPECT_EQ(zelui::qt::GetWidget(*slider), nullptr);
    EXPECT_EQ(slider->GetValue(), 0.25);
    EXPECT_EQ(popup->GetValueString(), U("A"));
    EXPECT_EQ(text->GetValue(), U("T"));
}

}  // namespace zeltests
