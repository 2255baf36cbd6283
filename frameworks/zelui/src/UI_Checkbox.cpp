#include <zelui/UI_Checkbox.h>

#include "CheckboxPeer.h"

namespace zelui {
namespace controls {

UI_Checkbox::UI_Checkbox() : mChecked(false) {}

UI_Checkbox::~UI_Checkbox() = default;

void UI_Checkbox::SetChecked(bool checked) {
    if (checked == mChecked) return;
    mChecked = checked;
    UI_SyncPeer();
}

std::unique_ptr<ui::UI_Node::Peer> UI_Checkbox::UI_MakePeer() { return std::make_unique<CheckboxPeer>(*this); }

}  // namespace controls
}  // namespace zelui
