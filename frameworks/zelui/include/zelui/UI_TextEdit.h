#pragma once

#include <cstddef>

#include <zelui/UI_InteractiveControlView.h>

namespace zelui {
namespace controls {

/// One line of text that the user can change.
///
/// Typing is a gesture: a start with the first change (the text is still the one of before), a change for each one
/// after it (the first included), an end with Return or when the focus goes. Escape takes the text of before back (one
/// more change when it was another one) and is a cancel. Return and Escape are keys of the field only during a gesture,
/// so that a dialog gets them otherwise; Tab is never. What an input method is still composing is no change yet. A
/// change that comes while the field has not got the focus, by a drop or from a screen reader, is a gesture of its own,
/// told at once.
///
/// Losing the focus, also with the whole window, being hidden, disabled or taken out of the window ends a gesture; as
/// that happens inside of other things, often while what the field is part of is being destroyed, it is told from the
/// main loop, or when the next gesture begins, and not at all when nobody holds the field any more.
///
/// While it is disabled the user cannot change it; the program can, at any time, also from what it is told: the text on
/// the screen then is the program's, and what could be undone before is gone.
class ZELUI_API UI_TextEdit : public UI_InteractiveControlView {
public:
    UI_TextEdit();

    /// At most kMaxLength code units, what is beyond is cut off; line ends, tabs and other control characters become
    /// blanks, halves of surrogate pairs are left out. The same goes for what the user puts in. Setting it tells
    /// nobody.
    void SetValue(const zelcore::ustring& text);
    /// The text that is in the field.
    const zelcore::ustring& GetValue() const { return mText; }
    /// The longest text, in code units; longer ones are cut.
    static constexpr std::size_t kMaxLength = 32768;

    /// Shown in an empty field, dimmed: what may be typed here. It is also what screen readers call a field that has no
    /// name and no static text before it.
    void SetPlaceholder(const zelcore::ustring& text);
    /// What SetPlaceholder set.
    const zelcore::ustring& GetPlaceholder() const { return mPlaceholder; }

protected:
    ~UI_TextEdit() override;
    std::unique_ptr<Peer> UI_MakePeer() override;

private:
    friend class UI_ClearButtonTextEdit;
    friend class UI_SearchBox;
    class TextEditPeer;

    zelcore::ustring mText;
    zelcore::ustring mPlaceholder;
    bool mHasClearButton = false;
    bool mHasMagnifier = false;
};

}  // namespace controls
}  // namespace zelui
