#include "KeyboardMapping.h"

#include <algorithm>
#include <iterator>
#include <zelui/QtBridge.h>

namespace zelui {

namespace {

struct KeyCode {
    int qtKey;
    int osCode;
};

// Letters and digits are the same in both numberings. Of the punctuation only those keys are known that have their code
// on every keyboard layout.
const KeyCode kKeyCodes[] = {
    {Qt::Key_Backspace, 0x08}, {Qt::Key_Tab, 0x09},        {Qt::Key_Backtab, 0x09},  {Qt::Key_Return, 0x0D},
    {Qt::Key_Enter, 0x0D},     {Qt::Key_Shift, 0x10},      {Qt::Key_Control, 0x11},  {Qt::Key_Alt, 0x12},
    {Qt::Key_AltGr, 0x12},     {Qt::Key_Pause, 0x13},      {Qt::Key_CapsLock, 0x14}, {Qt::Key_Escape, 0x1B},
    {Qt::Key_Space, 0x20},     {Qt::Key_PageUp, 0x21},     {Qt::Key_PageDown, 0x22}, {Qt::Key_End, 0x23},
    {Qt::Key_Home, 0x24},      {Qt::Key_Left, 0x25},       {Qt::Key_Up, 0x26},       {Qt::Key_Right, 0x27},
    {Qt::Key_Down, 0x28},      {Qt::Key_Print, 0x2C},      {Qt::Key_Insert, 0x2D},   {Qt::Key_Delete, 0x2E},
    {Qt::Key_Meta, 0x5B},      {Qt::Key_Super_L, 0x5B},    {Qt::Key_Super_R, 0x5C},  {Qt::Key_Menu, 0x5D},
    {Qt::Key_NumLock, 0x90},   {Qt::Key_ScrollLock, 0x91}, {Qt::Key_Plus, 0xBB},     {Qt::Key_Comma, 0xBC},
    {Qt::Key_Minus, 0xBD},     {Qt::Key_Period, 0xBE},
};

// The keys of the number pad that give the same characters as others.
const KeyCode kNumberPadCodes[] = {
    {Qt::Key_Asterisk, 0x6A}, {Qt::Key_Plus, 0x6B},  {Qt::Key_Minus, 0x6D},
    {Qt::Key_Period, 0x6E},   {Qt::Key_Comma, 0x6E}, {Qt::Key_Slash, 0x6F},
};

int FindIn(const KeyCode* begin, const KeyCode* end, int key) {
    const KeyCode* const found = std::find_if(begin, end, [key](const KeyCode& code) { return code.qtKey == key; });
    return found != end ? found->osCode : 0;
}

int GetNumberPadCode(int key) {
    if (key >= Qt::Key_0 && key <= Qt::Key_9) return 0x60 + (key - Qt::Key_0);
    return FindIn(std::begin(kNumberPadCodes), std::end(kNumberPadCodes), key);
}

int GetOSCode(int key) {
    if ((key >= Qt::Key_A && key <= Qt::Key_Z) || (key >= Qt::Key_0 && key <= Qt::Key_9)) return key;
    if (key >= Qt::Key_F1 && key <= Qt::Key_F24) return 0x70 + (key - Qt::Key_F1);
    return FindIn(std::begin(kKeyCodes), std::end(kKeyCodes), key);
}

int GetOSCode(const QKeyEvent& event) {
    const int numberPad = event.modifiers() & Qt::KeypadModifier ? GetNumberPadCode(event.key()) : 0;
    return numberPad != 0 ? numberPad : GetOSCode(event.key());
}

int GetModifiers(Qt::KeyboardModifiers modifiers) {
    return (modifiers & Qt::ShiftModifier ? ui::KeyboardEvent::kShift : 0) |
           (modifiers & Qt::ControlModifier ? ui::KeyboardEvent::kCommand : 0) |
           (modifiers & Qt::AltModifier ? ui::KeyboardEvent::kAlt : 0);
}

}  // namespace

ui::KeyboardEvent ToKeyboardEvent(const QKeyEvent& event) {
    const ui::KeyboardEvent::Kind kind =
        event.type() == QEvent::KeyRelease ? ui::KeyboardEvent::kKeyUp : ui::KeyboardEvent::kKeyDown;
    return ui::KeyboardEvent(kind, GetOSCode(event), GetModifiers(event.modifiers()), qt::FromQString(event.text()),
                             event.isAutoRepeat());
}

}  // namespace zelui
