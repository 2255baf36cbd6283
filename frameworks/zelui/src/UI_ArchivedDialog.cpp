#include <zelui/UI_ArchivedDialog.h>

#include <algorithm>
#include <optional>
#include <string_view>
#include <utility>

#include <zelui/ArchiveError.h>
#include <zelui/QtBridge.h>

#include "ArchivedButtonOrder.h"
#include "ArchivedNode.h"
#include "ArchivedNodeBuilder.h"
#include "ArchivedPeer.h"

namespace zelui {
namespace ui {

namespace {

typedef boost::intrusive_ptr<UI_Node> DialogNodePtr;

DialogLayoutItem ReadNodes(const utility::OS_ResourceManager* resources, const std::string& name,
                           const UI_ArchivedDialog::NodeFactory& factory) {
    std::optional<std::string> bytes;
    if (resources != nullptr) bytes = resources->ReadResource("xml", name);
    if (!bytes) throw ArchiveError("there is no such resource");
    DialogLayoutItem root = BuildArchivedNodes(ReadArchivedNodes(*bytes), factory);
    if (dynamic_cast<UI_SubView*>(root.node.get()) == nullptr) throw ArchiveError("the root is no UI_SubView");
    return root;
}

DialogLayoutItem LoadNodes(const utility::OS_ResourceManager* resources, const std::string& name,
                           const UI_ArchivedDialog::NodeFactory& factory) {
    try {
        return ReadNodes(resources, name, factory);
    } catch (const ArchiveError& error) {
        throw ArchiveError("The layout archive \"" + name + "\": " + error.what());
    }
}

DialogNodePtr FindNode(const DialogNodePtr& node, const std::string& id) {
    if (std::string_view(node->UI_GetID()) == id) return node;
    const UI_Container* const container = node->UI_AsContainer();
    for (std::size_t i = 0; container != nullptr && i < container->ChildCount(); ++i) {
        if (const DialogNodePtr found = FindNode(container->ChildAt(i), id)) return found;
    }
    return nullptr;
}

}  // namespace

UI_ArchivedDialog::UI_ArchivedDialog(const drawbot::SupplierInterface* supplier,
                                     const utility::OS_ResourceManager* resources, const std::string& archiveName,
                                     const zelcore::ustring& title, HWND parent, const NodeFactory& nodeFactory)
    : UI_ArchivedDialog(
          supplier, new ArchivedPeer(qt::ToQString(title), parent, LoadNodes(resources, archiveName, nodeFactory))) {}

// Takes the peer over. Both bases need it, and neither can be asked for it before the other is there.
UI_ArchivedDialog::UI_ArchivedDialog(const drawbot::SupplierInterface* supplier, ArchivedPeer* peer)
    : UI_Dialog(std::unique_ptr<Peer>(peer)),
      OS_Dialog(*this, *peer),
      mSupplier(supplier != nullptr ? supplier : drawbot::SupplierInterface::GetDefault()) {}

UI_ArchivedDialog::~UI_ArchivedDialog() {
    SetOkButton(nullptr);
    SetCancelButton(nullptr);
}

UI_ArchivedDialog::ArchivedPeer& UI_ArchivedDialog::GetArchivedPeer() const {
    return static_cast<ArchivedPeer&>(GetPeer());
}

DialogNodePtr UI_ArchivedDialog::GetNodeForID(const std::string& id) const { return FindNode(GetContentNode(), id); }

const boost::intrusive_ptr<UI_SubView>& UI_ArchivedDialog::GetContentNode() const {
    return GetArchivedPeer().GetRoot();
}

void UI_ArchivedDialog::SetOkButton(const boost::intrusive_ptr<controls::UI_Button>& button) {
    if (const auto before = GetArchivedPeer().GetOkButton()) before->mAfterUse.clear();
    if (button) button->mAfterUse = [this] { UI_Close(UI_DialogViewContainer::kResponseOK); };
    GetArchivedPeer().SetOkButton(button);
}

void UI_ArchivedDialog::SetCancelButton(const boost::intrusive_ptr<controls::UI_Button>& button) {
    if (const auto before = GetArchivedPeer().GetCancelButton()) before->mAfterUse.clear();
    if (button) button->mAfterUse = [this] { UI_Close(UI_DialogViewContainer::kResponseCancel); };
    GetArchivedPeer().SetCancelButton(button);
}

void UI_ArchivedDialog::Press(controls::UI_Button& button) { button.TellUsed(); }

void UI_ArchivedDialog::FlipNodePositionsOnMac(UI_Node& ok, UI_Node& cancel) {
    if (!ConfirmingButtonStandsLast()) return;
    zelcore::geom::RectF okFrame = ok.UI_GetLocalRectF();
    zelcore::geom::RectF cancelFrame = cancel.UI_GetLocalRectF();
    const float left = std::min(okFrame.left, cancelFrame.left);
    const float right = std::max(okFrame.Right(), cancelFrame.Right());
    const bool okWasLeft = okFrame.left < cancelFrame.left;
    okFrame.left = okWasLeft ? right - okFrame.width : left;
    cancelFrame.left = okWasLeft ? left : right - cancelFrame.width;
    ok.UI_SetLocalRectF(okFrame);
    cancel.UI_SetLocalRectF(cancelFrame);
}

}  // namespace ui
}  // namespace zelui
