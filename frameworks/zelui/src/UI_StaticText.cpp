#include <zelui/UI_StaticText.h>

#include "StaticTextPeer.h"

namespace zelui {
namespace controls {

UI_StaticText::UI_StaticText() : UI_ControlView(false), mAlignment(kAlignLeft) {}

UI_StaticText::~UI_StaticText() = default;

void UI_StaticText::SetLabelText(const zelcore::ustring& text) {
    if (text == mText) return;
    mText = text;
    UI_SyncPeer();
    if (UI_IsInWindow()) RenameControlsAfter(*this);
}

void UI_StaticText::SetAlignment(ControlAlignment alignment) {
    mAlignment = alignment;
    UI_SyncPeer();
}

std::unique_ptr<ui::UI_Node::Peer> UI_StaticText::UI_MakePeer() { return std::make_unique<StaticTextPeer>(*this); }

}  // namespace controls
}  // namespace zelui
