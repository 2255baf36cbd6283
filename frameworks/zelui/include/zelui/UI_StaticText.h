#pragma once

#include <zelui/UI_ControlView.h>

namespace zelui {
namespace controls {

/// Where a text stands in its frame. The numbers stand in layout archives.
enum ControlAlignment { kAlignLeft = 0, kAlignCenter = 1, kAlignRight = 2 };

/// One line of text that the user cannot change, in the middle of its frame's height. Text that does not fit is
/// shortened with "…" at its end.
class ZELUI_API UI_StaticText : public UI_ControlView {
public:
    UI_StaticText();

    /// The text; both setters are the same.
    void SetLabelText(const zelcore::ustring& text);
    /// Sets the text.
    void SetValue(const zelcore::ustring& text) { SetLabelText(text); }
    /// The text.
    const zelcore::ustring& GetValue() const { return mText; }

    /// Where in the frame the text stands.
    void SetAlignment(ControlAlignment alignment);
    /// What SetAlignment set.
    ControlAlignment GetAlignment() const { return mAlignment; }

protected:
    ~UI_StaticText() override;
    std::unique_ptr<Peer> UI_MakePeer() override;

private:
    zelcore::ustring mText;
    ControlAlignment mAlignment;
};

}  // namespace controls
}  // namespace zelui
