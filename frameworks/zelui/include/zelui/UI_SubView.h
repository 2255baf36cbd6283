#pragma once

#include <zelui/Theme.h>
#include <zelui/UI_Container.h>
#include <zelui/UI_DragDropHandler.h>
#include <zelui/UI_Node.h>

namespace zelui {
namespace ui {

/// A rectangle with children in it, the base of all views. Cuts off what its children draw outside of it.
class ZELUI_API UI_SubView : public UI_Node,
                             public UI_Container,
                             public ThemeOwner,
                             public ThemeClient,
                             public UI_DragDropHandler {
public:
    UI_SubView();

    /// Always the sub-view itself.
    using UI_Node::UI_AsContainer;
    UI_Container* UI_AsContainer() override;

protected:
    ~UI_SubView() override;

    UI_Node& UI_GetContainerNode() override;
    std::unique_ptr<Peer> UI_MakePeer() override;
};

}  // namespace ui
}  // namespace zelui
