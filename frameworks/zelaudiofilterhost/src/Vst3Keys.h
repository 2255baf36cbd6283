#pragma once

#include <cstdint>

namespace zelaudiofilterhost {

/// A key as VST3 views are told it.
struct Vst3Key {
    char16_t character = 0;
    std::int16_t virtualKey = 0;
    std::int16_t modifiers = 0;  ///< 1 Shift, 2 Alt, 4 Control (Command on a Mac)

    /// Whether there is anything in it that a view could know it by.
    bool IsKnown() const { return character != 0 || virtualKey != 0; }
};

/// The same from what AudioFilterEditor::DoKey gets. A letter or digit that types nothing because Control or Alt is
/// held is told as that letter, in lower case, or digit.
Vst3Key MakeVst3Key(int osCode, int modifiers, unsigned short character);

}  // namespace zelaudiofilterhost
