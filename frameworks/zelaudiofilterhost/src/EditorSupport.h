#pragma once

namespace zelaudiofilterhost {

// What editors of every format need.

/// Whether the key means "on to the next control": Tab, with or without Shift. With others it is the host's. The
/// arguments are those of AudioFilterEditor::DoKey.
inline bool AdvancesFocus(int osCode, int modifiers) {
    constexpr int kTab = 9;
    constexpr int kShift = 1;
    return osCode == kTab && (modifiers & ~kShift) == 0;
}

/// Says for a while that something is going on.
class Marker {
public:
    explicit Marker(bool& flag) : mFlag(flag) { mFlag = true; }
    ~Marker() { mFlag = false; }
    Marker(const Marker&) = delete;
    Marker& operator=(const Marker&) = delete;

private:
    bool& mFlag;
};

}  // namespace zelaudiofilterhost
