#pragma once

#include "NodePeer.h"

namespace zelui {

/// The Qt side of a sub-view: a widget that draws what the node draws.
class SubViewPeer : public ui::UI_Node::Peer {
public:
    explicit SubViewPeer(ui::UI_Node& node);

protected:
    QWidget* MakeWidget(QWidget& parent) override;
};

}  // namespace zelui
