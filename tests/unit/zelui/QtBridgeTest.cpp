#include <gtest/gtest.h>
#include <QWidget>

#include <zelcore/Utf.h>
#include <zelui/QtBridge.h>

using zelcore::ustring;

TEST(QtBridgeTest, TextsPassUnitByUnitAlsoIllFormedOnes) {
    const ustring text = {0xFEFF, 'a', 0, 0xD800, 0x00E4, 0xDC00, 0xFFFE};
    const QString converted = zelui::qt::ToQString(text);
    ASSERT_EQ(converted.size(), 7);
    EXPECT_EQ(converted[3], QChar(0xD800));
    EXPECT_EQ(zelui::qt::FromQString(converted), text);
    EXPECT_TRUE(zelui::qt::ToQString(ustring()).isEmpty());
    EXPECT_TRUE(zelui::qt::FromQString(QString()).empty());
}

TEST(QtBridgeTest, AWidgetIsFoundByItsWindow) {
    QWidget widget;
    const HWND window = zelui::qt::GetWindowHandle(&widget);
    EXPECT_NE(window, nullptr);
    EXPECT_EQ(zelui::qt::FindWidget(window), &widget);
}

TEST(QtBridgeTest, OthersWindowsAreNotFound) {
    EXPECT_EQ(zelui::qt::FindWidget(nullptr), nullptr);
    EXPECT_EQ(zelui::qt::FindWidget(reinterpret_cast<HWND>(0x7FFFFFF1)), nullptr);
    EXPECT_EQ(zelui::qt::GetWindowHandle(nullptr), nullptr);
}
