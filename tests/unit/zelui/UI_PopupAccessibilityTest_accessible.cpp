#include <gtest/gtest.h>
#include <zelui/UI_Popup.h>

#include "AccessibleNode.h"
#include "ControlStage.h"

namespace zeltests {

TEST(UI_PopupAccessibilityTest, AShownTextIsReadInPlaceOfTheItem) {
    using zelui::controls::UI_Popup;
    ControlStage stage;
    const auto popup = stage.Add(new UI_Popup(zelui::controls::kPopupChoice, false), {10, 10, 120, 20});
    for (const char* const item : {"(None)", "Left", "Right"}) popup->AddItem(U(item));
    popup->SetValueString(U("Bypass"), false);
    EXPECT_EQ(GetAccessible(*popup)->text(QAccessible::Value), "Bypass");
    popup->SetValue(0);
    EXPECT_EQ(GetAccessible(*popup)->text(QAccessible::Value), "(None)");
}

}  // namespace zeltests
