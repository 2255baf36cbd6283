#include <zelui/UI_Container.h>

#include <algorithm>
#include <stdexcept>

#include <zelui/UI_Node.h>

namespace zelui {
namespace ui {

UI_Container::UI_Container() = default;

UI_Container::~UI_Container() {
    for (const boost::intrusive_ptr<UI_Node>& child : mChildren) {
        child->mParent = nullptr;
        child->SetHost(nullptr);
    }
}

void UI_Container::ChildPushBack(const boost::intrusive_ptr<UI_Node>& child) {
    if (!child) throw std::invalid_argument("UI_Container::ChildPushBack: no child was given");
    UI_Node& self = UI_GetContainerNode();
    for (const UI_Node* node = &self; node != nullptr; node = node->UI_GetParentNode()) {
        if (node == child.get()) throw std::invalid_argument("UI_Container::ChildPushBack: a node in itself");
    }
    if (child->mParent != nullptr) child->mParent->UI_AsContainer()->ChildRemove(child);
    mChildren.push_back(child);
    child->SetParent(&self);
}

void UI_Container::ChildRemove(const boost::intrusive_ptr<UI_Node>& child) {
    const auto found = std::find(mChildren.begin(), mChildren.end(), child);
    if (found == mChildren.end()) return;
    // The caller's pointer may be the very one that is erased.
    const boost::intrusive_ptr<UI_Node> removed = *found;
    mChildren.erase(found);
    removed->SetParent(nullptr);
}

boost::intrusive_ptr<UI_Node> UI_Container::ChildAt(std::size_t index) const {
    return index < mChildren.size() ? mChildren[index] : boost::intrusive_ptr<UI_Node>();
}

}  // namespace ui
}  // namespace zelui
