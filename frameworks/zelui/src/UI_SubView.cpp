#include <zelui/UI_SubView.h>

#include "SubViewPeer.h"

namespace zelui {
namespace ui {

UI_SubView::UI_SubView() = default;

UI_SubView::~UI_SubView() = default;

UI_Container* UI_SubView::UI_AsContainer() { return this; }

UI_Node& UI_SubView::UI_GetContainerNode() { return *this; }

std::unique_ptr<UI_Node::Peer> UI_SubView::UI_MakePeer() { return std::make_unique<SubViewPeer>(*this); }

}  // namespace ui
}  // namespace zelui
