#pragma once

#include <zelui/UI_InteractiveControlView.h>

namespace zelui {
namespace controls {

/// One line of text that the user can change. Typing is a gesture: a start with the first change, a change for each one
/// after it (the first included), an end with Return or when the focus goes; Escape takes the text of before back and
/// is a cancel, as long as something was changed, and no key of the field otherwise.
class ZELUI_API UI_TextEdit : public UI_InteractiveControlView {
public:
    UI_TextEdit();

    /// At most kMaxLength code units, what is beyond is cut off; line ends become blanks. Setting it tells nobody.
    void SetValue(const zelcore::ustring& text);
    const zelcore::ustring& GetValue() const { return mText; }
    static constexpr std::size_t kMaxLength = 32768;

    /// Shown in an empty field, dimmed: what may be typed here.
    void SetPlaceholder(const zelcore::ustring& text);
    const zelcore::ustring& GetPlaceholder() const { return mPlaceholder; }

protected:
    ~UI_TextEdit() override;
    std::unique_ptr<Peer> UI_MakePeer() override;

private:
    friend class UI_ClearButtonTextEdit;
    class TextEditPeer;

    zelcore::ustring mText;
    zelcore::ustring mPlaceholder;
    bool mShowsClearButton = false;
};

}  // namespace controls
}  // namespace zelui
