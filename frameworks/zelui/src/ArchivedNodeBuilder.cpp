#include "ArchivedNodeBuilder.h"

#include <map>
#include <string>
#include <string_view>

#include <zelcore/Utf.h>
#include <zelui/UI_Checkbox.h>
#include <zelui/UI_ClearButtonTextEdit.h>
#include <zelui/UI_MultiColumnTree.h>
#include <zelui/UI_Popup.h>
#include <zelui/UI_Slider.h>
#include <zelui/UI_StaticText.h>
#include <zelui/UI_SubView.h>
#include <zelui/UI_TextButton.h>
#include <zelui/UI_TextEdit.h>

#include "ArchiveValue.h"

namespace zelui {

namespace {

typedef boost::intrusive_ptr<ui::UI_Node> NodePtr;
typedef NodePtr (*Maker)();

template <typename Node>
NodePtr Make() {
    return NodePtr(new Node);
}

NodePtr MakePopup() { return NodePtr(new controls::UI_Popup(controls::kPopupChoice, false)); }

NodePtr MakeSlider() { return NodePtr(new controls::UI_Slider(controls::kSliderHorizontal, false)); }

const std::map<std::string_view, Maker>& GetAdapters() {
    static const std::map<std::string_view, Maker> adapters = {
        {"zelui::ui::UI_SubView", &Make<ui::UI_SubView>},
        {"zelui::controls::UI_Checkbox", &Make<controls::UI_Checkbox>},
        {"zelui::controls::UI_ClearButtonTextEdit", &Make<controls::UI_ClearButtonTextEdit>},
        {"zelui::controls::UI_MultiColumnTree", &Make<controls::UI_MultiColumnTree>},
        {"zelui::controls::UI_Popup", &MakePopup},
        {"zelui::controls::UI_SearchBox", &Make<controls::UI_SearchBox>},
        {"zelui::controls::UI_Slider", &MakeSlider},
        {"zelui::controls::UI_StaticText", &Make<controls::UI_StaticText>},
        {"zelui::controls::UI_TextButton", &Make<controls::UI_TextButton>},
        {"zelui::controls::UI_TextEdit", &Make<controls::UI_TextEdit>},
    };
    return adapters;
}

NodePtr MakeNode(const ArchivedNode& archived, const ui::UI_ArchivedDialog::NodeFactory& factory) {
    NodePtr node;
    if (!archived.className.empty() && factory) node = factory(archived.className);
    if (node && (node->UI_GetParentNode() != nullptr || node->UI_IsInWindow()))
        ThrowArchiveError(archived.line, "the node made for the class name stands somewhere else already");
    if (node) return node;
    const auto maker = GetAdapters().find(archived.adapter);
    if (maker == GetAdapters().end())
        ThrowArchiveError(archived.line, "no node is known by the adapter \"" + archived.adapter + "\"");
    return maker->second();
}

void ApplyTexts(const ArchivedNode& archived, ui::UI_Node& node) {
    if (auto* const text = dynamic_cast<controls::UI_StaticText*>(&node)) {
        if (archived.text) text->SetLabelText(*archived.text);
        if (archived.alignment >= controls::kAlignLeft && archived.alignment <= controls::kAlignRight)
            text->SetAlignment(static_cast<controls::ControlAlignment>(*archived.alignment));
    }
    if (auto* const button = dynamic_cast<controls::UI_Button*>(&node)) {
        if (archived.text) button->SetText(*archived.text);
    }
    if (auto* const checkbox = dynamic_cast<controls::UI_Checkbox*>(&node)) {
        if (archived.checked) checkbox->SetChecked(*archived.checked);
    }
}

void Apply(const ArchivedNode& archived, ui::UI_Node& node) {
    node.UI_SetID(zelcore::utf8string(archived.id.begin(), archived.id.end()));
    node.UI_SetLocalRectF(archived.bounds);
    node.UI_SetToolTip(archived.toolTip);
    node.UI_Show(archived.visible);
    if (archived.enabled) node.UI_SetDisabled(!*archived.enabled);
    ApplyTexts(archived, node);
    auto* const control = dynamic_cast<controls::UI_ControlView*>(&node);
    if (control != nullptr && archived.wantsFocus) control->SetWantsKeyboardFocus(*archived.wantsFocus);
}

DialogFlow GetFlow(const ArchivedNode& archived) {
    if (!archived.autoLayout) return DialogFlow::kNone;
    return archived.autoLayoutHorizontal ? DialogFlow::kHorizontal : DialogFlow::kVertical;
}

}  // namespace

DialogLayoutItem BuildArchivedNodes(const ArchivedNode& archived, const ui::UI_ArchivedDialog::NodeFactory& factory) {
    DialogLayoutItem item{MakeNode(archived, factory), archived.constraints,    GetFlow(archived),
                          archived.maintainMargins,    archived.layoutChildren, {}};
    Apply(archived, *item.node);
    ui::UI_Container* const container = item.node->UI_AsContainer();
    if (container == nullptr && !archived.children.empty())
        ThrowArchiveError(archived.line, "children in a node that can have none");
    for (const ArchivedNode& child : archived.children) {
        item.children.push_back(BuildArchivedNodes(child, factory));
        container->ChildPushBack(item.children.back().node);
    }
    return item;
}

}  // namespace zelui
