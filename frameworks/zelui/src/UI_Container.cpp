#include <zelui/UI_Container.h>

#include <algorithm>
#include <stdexcept>

#include <zelui/UI_Node.h>

#include "CallOut.h"

namespace zelui {
namespace ui {

namespace {

bool IsIn(const UI_Node& node, const UI_Node& ancestor) {
    const UI_Node* at = &node;
    while (at != nullptr && at != &ancestor) at = at->UI_GetParentNode();
    return at != nullptr;
}

}  // namespace

UI_Container::UI_Container() = default;

UI_Container::~UI_Container() {
    const std::vector<boost::intrusive_ptr<UI_Node>> children = std::move(mChildren);
    for (const boost::intrusive_ptr<UI_Node>& child : children) child->mParent = nullptr;
    for (const boost::intrusive_ptr<UI_Node>& child : children) {
        // It stood in no window any more, but may have been disabled. Who goes as well is told nothing.
        if (child->GetRefCount() > 1) CallOut("A view that lost its parent", [&child] { child->TellStateChanged(); });
    }
}

void UI_Container::ChildPushBack(const boost::intrusive_ptr<UI_Node>& child) {
    if (!child) throw std::invalid_argument("UI_Container::ChildPushBack: no child was given");
    UI_Node& self = UI_GetContainerNode();
    if (IsIn(self, *child)) throw std::invalid_argument("UI_Container::ChildPushBack: a node in itself");
    // The caller's pointer may stand in a list that changes meanwhile.
    const boost::intrusive_ptr<UI_Node> added = child;  // NOLINT(performance-unnecessary-copy-initialization)
    added->LeavePlace();
    // Whoever was told of that may have put it somewhere else, which was decided later than this.
    if (added->mParent != nullptr || added->mHost != nullptr || IsIn(self, *added)) return;
    mChildren.push_back(added);
    added->SetParent(&self);
}

void UI_Container::ChildRemove(const boost::intrusive_ptr<UI_Node>& child) {
    if (std::find(mChildren.begin(), mChildren.end(), child) == mChildren.end()) return;
    // The caller's pointer may be the very one that is erased.
    const boost::intrusive_ptr<UI_Node> removed = child;  // NOLINT(performance-unnecessary-copy-initialization)
    // While it still has its place: the focus goes to the neighbour.
    removed->PassFocusOn();
    const auto found = std::find(mChildren.begin(), mChildren.end(), removed);
    if (found == mChildren.end()) return;
    mChildren.erase(found);
    removed->SetParent(nullptr);
}

boost::intrusive_ptr<UI_Node> UI_Container::ChildAt(std::size_t index) const {
    return index < mChildren.size() ? mChildren[index] : boost::intrusive_ptr<UI_Node>();
}

}  // namespace ui
}  // namespace zelui
