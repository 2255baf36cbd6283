#pragma once

#include <zelui/UI_SubView.h>

#include "OwnTabOrder.h"

namespace zelui {
namespace controls {

/// The node for the part of a tree in which the rows are shown: its widget is the viewport of the tree's, so that what
/// stands in it is cut off and scrolled with the rows.
class TreeContentView final : public ui::UI_SubView, public OwnTabOrder {
protected:
    std::unique_ptr<Peer> UI_MakePeer() override;
};

}  // namespace controls
}  // namespace zelui
