#pragma once

#include <cstdint>

namespace zelaudiofilterhost {

/// A key as VST2 effects are told it.
struct Vst2Key {
    std::int32_t character = 0;
    std::uint8_t virtualKey = 0;  ///< one of vst2::VirtualKey
    std::uint8_t modifiers = 0;   ///< sum of vst2::KeyModifier

    /// Whether there is anything in it that an effect could know it by.
    bool IsKnown() const { return character != 0 || virtualKey != 0; }
    bool operator==(const Vst2Key&) const = default;
};

/// The same from what AudioFilterEditor::DoKey gets. A letter or digit that types nothing because Control or Alt is
/// held is told as that letter, in lower case, or digit.
Vst2Key MakeVst2Key(int osCode, int modifiers, unsigned short character);

}  // namespace zelaudiofilterhost
