#include "TreeContentView.h"

#include <QAbstractScrollArea>

#include "NodePeer.h"

namespace zelui {
namespace controls {

namespace {

class ContentPeer final : public ui::UI_Node::Peer {
public:
    explicit ContentPeer(ui::UI_Node& node) : Peer(node, kBorrowed) {}

private:
    QWidget* MakeWidget(QWidget& parent) override { return static_cast<QAbstractScrollArea&>(parent).viewport(); }
};

}  // namespace

std::unique_ptr<ui::UI_Node::Peer> TreeContentView::UI_MakePeer() { return std::make_unique<ContentPeer>(*this); }

}  // namespace controls
}  // namespace zelui
