#include "Vst2Keys.h"

#include <algorithm>

#include "Vst2Abi.h"

namespace zelaudiofilterhost {

namespace {

/// Keys whose numbers follow one another in both numberings.
struct KeyRange {
    int firstOsCode;
    int lastOsCode;
    vst2::VirtualKey first;
};

constexpr KeyRange kKeyRanges[] = {
    {0x08, 0x08, vst2::kKeyBackspace},  {0x09, 0x09, vst2::kKeyTab},      {0x0C, 0x0C, vst2::kKeyClear},
    {0x0D, 0x0D, vst2::kKeyReturn},     {0x10, 0x12, vst2::kKeyShift},    {0x13, 0x13, vst2::kKeyPause},
    {0x1B, 0x1B, vst2::kKeyEscape},     {0x20, 0x20, vst2::kKeySpace},    {0x21, 0x22, vst2::kKeyPageUp},
    {0x23, 0x23, vst2::kKeyEnd},        {0x24, 0x24, vst2::kKeyHome},     {0x25, 0x28, vst2::kKeyLeft},
    {0x29, 0x2A, vst2::kKeySelect},     {0x2C, 0x2C, vst2::kKeySnapshot}, {0x2D, 0x2F, vst2::kKeyInsert},
    {0x60, 0x6F, vst2::kKeyNumberPad0}, {0x70, 0x7B, vst2::kKeyF1},       {0x90, 0x91, vst2::kKeyNumLock},
};

std::uint8_t FindVirtualKey(int osCode) {
    for (const KeyRange& range : kKeyRanges) {
        if (osCode < range.firstOsCode || osCode > range.lastOsCode) continue;
        return static_cast<std::uint8_t>(range.first + (osCode - range.firstOsCode));
    }
    return 0;
}

/// What a key types without modifiers, where its number in the Windows numbering says so.
std::int32_t FindCharacter(int osCode) {
    if (osCode >= '0' && osCode <= '9') return osCode;
    return osCode >= 'A' && osCode <= 'Z' ? osCode - 'A' + 'a' : 0;
}

std::uint8_t TranslateVst2Modifiers(int modifiers) {
    constexpr int kShift = 1;
    constexpr int kControl = 2;
    constexpr int kAlt = 4;
    int result = 0;
    if ((modifiers & kShift) != 0) result |= vst2::kModifierShift;
    if ((modifiers & kControl) != 0) result |= vst2::kModifierControl;
    if ((modifiers & kAlt) != 0) result |= vst2::kModifierAlt;
    return static_cast<std::uint8_t>(result);
}

}  // namespace

Vst2Key MakeVst2Key(int osCode, int modifiers, unsigned short character) {
    Vst2Key key;
    key.character = character != 0 ? character : FindCharacter(osCode);
    key.virtualKey = FindVirtualKey(osCode);
    key.modifiers = TranslateVst2Modifiers(modifiers);
    return key;
}

}  // namespace zelaudiofilterhost
