#include "AccessibleNode.h"
#include "TextEditStage.h"

namespace zeltests {
namespace {

/// A field as screen readers have it.
class UI_TextEditAccessibilityTest : public TextEditStage {
protected:
    UI_TextEditAccessibilityTest() { Stand(new Edit); }
};

}  // namespace

TEST_F(UI_TextEditAccessibilityTest, AChangeFromAScreenReaderIsAGestureOfItsOwn) {
    TakeFocusAway();
    GetAccessible(*mEdit)->setText(QAccessible::Value, "read\nto");
    EXPECT_EQ(mTold, (Told{"start:", "change:read to", "end:read to", "changed:read to"}));
    EXPECT_EQ(GetField()->text(), "read to");
}

TEST_F(UI_TextEditAccessibilityTest, ItIsReadAsAFieldWithItsText) {
    EXPECT_EQ(GetAccessible(*mEdit)->role(), QAccessible::EditableText);
    mEdit->SetPlaceholder(U("Search"));
    EXPECT_EQ(GetAccessible(*mEdit)->text(QAccessible::Value), "");
    Type("abc");
    EXPECT_EQ(GetAccessible(*mEdit)->text(QAccessible::Value), "abc");
}

}  // namespace zeltests
