#pragma once

#include <zelcore/ustring.h>

#include <zelui/Export.h>

namespace zelui {
namespace ui {

/// One key pressed or released, as nodes get it. A value.
class ZELUI_API KeyboardEvent {
public:
    /// A press, repetitions included, or a release.
    enum Kind { kKeyDown, kKeyUp };
    /// Keys held meanwhile; combined by "or". kCommand is Control, and the command key on macOS.
    enum Modifier { kShift = 1, kCommand = 2, kAlt = 4 };

    /// For the toolkit, and for tests.
    KeyboardEvent(Kind kind, int osCode, int modifiers, const zelcore::ustring& text, bool isRepeat);

    /// Pressed or released.
    Kind GetKind() const { return mKind; }
    /// The key's code, in the numbering of the Windows virtual keys on every platform (Tab is 9, Return 13); 0 for a
    /// key that has none.
    int GetOSCode() const { return mOSCode; }
    /// Which of the keys that change others are down; combined by "or".
    int GetModifiers() const { return mModifiers; }
    /// The characters that the key gives; may be empty.
    const zelcore::ustring& GetText() const { return mText; }
    /// True for the repetitions of a key that is held down.
    bool IsRepeat() const { return mRepeat; }

private:
    Kind mKind;
    int mOSCode;
    int mModifiers;
    zelcore::ustring mText;
    bool mRepeat;
};

}  // namespace ui
}  // namespace zelui
