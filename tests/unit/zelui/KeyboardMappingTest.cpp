#include <gmock/gmock.h>

#include "NodeTools.h"

namespace zeltests {
namespace {

using zelui::qt::NodeWidget;
using namespace zelui::ui;

class KeyboardMappingTest : public testing::Test {
protected:
    KeyboardMappingTest() : mNode(MakeNode({0, 0, 20, 20})), mWidget(mNode) { ShowActive(mWidget); }

    KeyboardEvent Send(int key, Qt::KeyboardModifiers modifiers = Qt::NoModifier, const QString& text = QString(),
                       QEvent::Type type = QEvent::KeyPress, bool repeat = false) {
        QKeyEvent event(type, key, modifiers, text, repeat);
        mNode->keys.clear();
        QCoreApplication::sendEvent(WidgetOf(*mNode), &event);
        EXPECT_EQ(1u, mNode->keys.size());
        return mNode->keys.empty() ? KeyboardEvent(KeyboardEvent::kKeyDown, -1, 0, U(""), false) : mNode->keys.back();
    }
    int GetCode(int key, Qt::KeyboardModifiers modifiers = Qt::NoModifier) { return Send(key, modifiers).GetOSCode(); }

    TestNodePtr mNode;
    NodeWidget mWidget;
};

TEST_F(KeyboardMappingTest, LettersAndDigitsHaveTheirOwnCodes) {
    EXPECT_EQ('A', GetCode(Qt::Key_A));
    EXPECT_EQ('Z', GetCode(Qt::Key_Z));
    EXPECT_EQ('0', GetCode(Qt::Key_0));
    EXPECT_EQ('9', GetCode(Qt::Key_9));
}

TEST_F(KeyboardMappingTest, SpecialKeysHaveTheirVirtualKeyCodes) {
    const std::pair<int, int> codes[] = {
        {Qt::Key_Backspace, 0x08}, {Qt::Key_Return, 0x0D},  {Qt::Key_Enter, 0x0D},     {Qt::Key_Shift, 0x10},
        {Qt::Key_Control, 0x11},   {Qt::Key_Alt, 0x12},     {Qt::Key_AltGr, 0x12},     {Qt::Key_Pause, 0x13},
        {Qt::Key_CapsLock, 0x14},  {Qt::Key_Escape, 0x1B},  {Qt::Key_Space, 0x20},     {Qt::Key_PageUp, 0x21},
        {Qt::Key_PageDown, 0x22},  {Qt::Key_End, 0x23},     {Qt::Key_Home, 0x24},      {Qt::Key_Left, 0x25},
        {Qt::Key_Up, 0x26},        {Qt::Key_Right, 0x27},   {Qt::Key_Down, 0x28},      {Qt::Key_Print, 0x2C},
        {Qt::Key_Insert, 0x2D},    {Qt::Key_Delete, 0x2E},  {Qt::Key_Meta, 0x5B},      {Qt::Key_Super_L, 0x5B},
        {Qt::Key_Super_R, 0x5C},   {Qt::Key_Menu, 0x5D},    {Qt::Key_F1, 0x70},        {Qt::Key_F12, 0x7B},
        {Qt::Key_F24, 0x87},       {Qt::Key_NumLock, 0x90}, {Qt::Key_ScrollLock, 0x91}};
    for (const auto& [key, code] : codes) EXPECT_EQ(code, GetCode(key)) << code;
}

TEST_F(KeyboardMappingTest, TheNumberPadHasItsOwnDigitsAndOperators) {
    EXPECT_EQ(0x60, GetCode(Qt::Key_0, Qt::KeypadModifier));
    EXPECT_EQ(0x69, GetCode(Qt::Key_9, Qt::KeypadModifier));
    EXPECT_EQ(0x6A, GetCode(Qt::Key_Asterisk, Qt::KeypadModifier));
    EXPECT_EQ(0x6B, GetCode(Qt::Key_Plus, Qt::KeypadModifier));
    EXPECT_EQ(0x6D, GetCode(Qt::Key_Minus, Qt::KeypadModifier));
    EXPECT_EQ(0x6E, GetCode(Qt::Key_Period, Qt::KeypadModifier));
    EXPECT_EQ(0x6E, GetCode(Qt::Key_Comma, Qt::KeypadModifier));
    EXPECT_EQ(0x6F, GetCode(Qt::Key_Slash, Qt::KeypadModifier));
    EXPECT_EQ(0x0D, GetCode(Qt::Key_Enter, Qt::KeypadModifier));
    EXPECT_EQ(0x25, GetCode(Qt::Key_Left, Qt::KeypadModifier));
}

TEST_F(KeyboardMappingTest, PunctuationThatEveryLayoutHasKeepsItsCode) {
    EXPECT_EQ(0xBB, GetCode(Qt::Key_Plus));
    EXPECT_EQ(0xBC, GetCode(Qt::Key_Comma));
    EXPECT_EQ(0xBD, GetCode(Qt::Key_Minus));
    EXPECT_EQ(0xBE, GetCode(Qt::Key_Period));
}

TEST_F(KeyboardMappingTest, OtherKeysHaveNone) {
    EXPECT_EQ(0, GetCode(Qt::Key_unknown));
    EXPECT_EQ(0, GetCode(Qt::Key_Adiaeresis));
    EXPECT_EQ(0, GetCode(Qt::Key_F25));
    EXPECT_EQ(0, GetCode(0));
}

TEST_F(KeyboardMappingTest, ATabThatTheFocusDoesNotFollowIsAKeyLikeOthers) {
    EXPECT_EQ(0x09, GetCode(Qt::Key_Tab, Qt::ControlModifier));
    const KeyboardEvent back = Send(Qt::Key_Backtab, Qt::ControlModifier | Qt::ShiftModifier);
    EXPECT_EQ(0x09, back.GetOSCode());
    EXPECT_EQ(KeyboardEvent::kShift | KeyboardEvent::kCommand, back.GetModifiers());
}

TEST_F(KeyboardMappingTest, ModifiersAreCombined) {
    EXPECT_EQ(0, Send(Qt::Key_A).GetModifiers());
    EXPECT_EQ(KeyboardEvent::kShift, Send(Qt::Key_A, Qt::ShiftModifier).GetModifiers());
    EXPECT_EQ(KeyboardEvent::kAlt | KeyboardEvent::kCommand,
              Send(Qt::Key_A, Qt::AltModifier | Qt::ControlModifier).GetModifiers());
    EXPECT_EQ(0, Send(Qt::Key_5, Qt::KeypadModifier).GetModifiers());
}

TEST_F(KeyboardMappingTest, TextKindAndRepetitionAreKept) {
    const KeyboardEvent down = Send(Qt::Key_A, Qt::NoModifier, QString::fromUtf8("\xC3\xA4"));
    EXPECT_EQ(KeyboardEvent::kKeyDown, down.GetKind());
    EXPECT_EQ(U("\xC3\xA4"), down.GetText());
    EXPECT_FALSE(down.IsRepeat());
    EXPECT_TRUE(Send(Qt::Key_A, Qt::NoModifier, "a", QEvent::KeyPress, true).IsRepeat());
    EXPECT_EQ(KeyboardEvent::kKeyUp, Send(Qt::Key_A, Qt::NoModifier, "a", QEvent::KeyRelease).GetKind());
    EXPECT_TRUE(Send(Qt::Key_Left).GetText().empty());
}

}  // namespace
}  // namespace zeltests
