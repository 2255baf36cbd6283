#include "KeyboardMapping.h"

#include <iterator>
#include <zelui/QtBridge.h>

namespace zelui {

namespace {

struct KeyCode {
    int qtKey;
    int osCode;
};

// Letters and digits are the same in both numberings.
const KeyCode kKeyCodes[] = {
    {Qt::Key_Backspace, 0x08}, {Qt::Key_Tab, 0x09},     {Qt::Key_Backtab, 0x09}, {Qt::Key_Return, 0x0D},
    {Qt::Key_Enter, 0x0D},     {Qt::Key_Shift, 0x10},   {Qt::Key_Control, 0x11}, {Qt::Key_Alt, 0x12},
    {Qt::Key_Pause, 0x13},     {Qt::Key_CapsLock, 0x14}, {Qt::Key_Escape, 0x1B}, {Qt::Key_Space, 0x20},
    {Qt::Key_PageUp, 0x21},    {Qt::Key_PageDown, 0x22}, {Qt::Key_End, 0x23},    {Qt::Key_Home, 0x24},
    {Qt::Key_Left, 0x25},      {Qt::Key_Up, 0x26},      {Qt::Key_Right, 0x27},   {Qt::Key_Down, 0x28},
    {Qt::Key_Insert, 0x2D},    {Qt::Key_Delete, 0x2E},  {Qt::Key_Meta, 0x5B},    {Qt::Key_Menu, 0x5D},
};

int GetOSCode(int key) {
    if ((key >= Qt::Key_A && key <= Qt::Key_Z) || (key >= Qt::Key_0 && key <= Qt::Key_9)) return key;
    if (key >= Qt::Key_F1 && key <= Qt::Key_F24) return 0x70 + (key - Qt::Key_F1);
    for (const KeyCode& code : kKeyCodes) {
        if (code.qtKey == key) return code.osCode;
    }
    return 0;
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
    return ui::KeyboardEvent(kind, GetOSCode(event.key()), GetModifiers(event.modifiers()),
                             qt::FromQString(event.text()), event.isAutoRepeat());
}

}  // namespace zelui
