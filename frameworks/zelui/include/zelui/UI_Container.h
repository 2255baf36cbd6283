#pragma once

#include <cstddef>
#include <vector>

#include <boost/intrusive_ptr.hpp>

#include <zelui/Export.h>

namespace zelui {
namespace ui {

class UI_Node;

/// A node that has children, in the order in which they are drawn (the last one on top) and reached by the Tab key. It
/// holds them; a child has one parent at most. Main thread.
class ZELUI_API UI_Container {
public:
    /// Adds `child` as the last child; taken from its former parent, or from the window whose root it is. Throws
    /// std::invalid_argument for null, and for a child that this container is itself part of.
    void ChildPushBack(const boost::intrusive_ptr<UI_Node>& child);
    /// Takes `child` away; nothing when it is no child of this container. Its window parts go, it itself lives as long
    /// as somebody holds it.
    void ChildRemove(const boost::intrusive_ptr<UI_Node>& child);

    /// How many children it has.
    std::size_t ChildCount() const { return mChildren.size(); }
    /// The child at `index`, null beyond the end.
    boost::intrusive_ptr<UI_Node> ChildAt(std::size_t index) const;

protected:
    UI_Container();
    /// Leaves the children without a parent and lets go of them.
    virtual ~UI_Container();
    UI_Container(const UI_Container&) = delete;
    UI_Container& operator=(const UI_Container&) = delete;

    /// The node that this container is.
    virtual UI_Node& UI_GetContainerNode() = 0;

private:
    friend class UI_Node;
    std::vector<boost::intrusive_ptr<UI_Node>> mChildren;
};

}  // namespace ui
}  // namespace zelui
