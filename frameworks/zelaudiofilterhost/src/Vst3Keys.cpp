#include "Vst3Keys.h"

#include "Vst2Keys.h"

namespace zelaudiofilterhost {

namespace {

/// The keys that VST3 has added to the numbering of VST2, of which it has kept the rest.
std::int16_t FindAddedKey(int osCode) {
    constexpr int kLeftWindows = 0x5B;
    constexpr int kRightWindows = 0x5C;
    constexpr int kMenu = 0x5D;
    constexpr int kF13 = 0x7C;
    constexpr int kF24 = 0x87;
    if (osCode == kMenu) return 58;
    if (osCode == kLeftWindows || osCode == kRightWindows) return 77;
    return static_cast<std::int16_t>(osCode >= kF13 && osCode <= kF24 ? 65 + (osCode - kF13) : 0);
}

std::int16_t TranslateVst3Modifiers(int modifiers) {
    constexpr int kShift = 1;
    constexpr int kControl = 2;
    constexpr int kAlt = 4;
    int result = 0;
    if ((modifiers & kShift) != 0) result |= 1;
    if ((modifiers & kAlt) != 0) result |= 2;
    if ((modifiers & kControl) != 0) result |= 4;
    return static_cast<std::int16_t>(result);
}

}  // namespace

Vst3Key MakeVst3Key(int osCode, int modifiers, unsigned short character) {
    const Vst2Key common = MakeVst2Key(osCode, modifiers, character);
    Vst3Key key;
    key.character = static_cast<char16_t>(common.character);
    key.virtualKey = common.virtualKey != 0 ? common.virtualKey : FindAddedKey(osCode);
    key.modifiers = TranslateVst3Modifiers(modifiers);
    return key;
}

}  // namespace zelaudiofilterhost
