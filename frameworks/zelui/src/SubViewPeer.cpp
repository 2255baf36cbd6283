#include "SubViewPeer.h"

#include "NodeView.h"

namespace zelui {

SubViewPeer::SubViewPeer(ui::UI_Node& node) : Peer(node) {}

QWidget* SubViewPeer::MakeWidget(QWidget& parent) { return new NodeView(parent); }

}  // namespace zelui
