#include <gtest/gtest.h>
#include <ostream>
#include <string>
#include <vector>

#include <zelcore/Utf.h>
#include <zelui/UI_Checkbox.h>
#include <zelui/UI_ClearButtonTextEdit.h>
#include <zelui/UI_MultiColumnTree.h>
#include <zelui/UI_StaticText.h>
#include <zelui/UI_TextButton.h>

#include "../../../frameworks/zelui/src/ArchivedNode.h"
#include "../../../frameworks/zelui/src/ArchivedNodeBuilder.h"
#include "../../../frameworks/zelui/src/ArchiveReader.h"
#include "ArchiveTools.h"
#include "NodeTools.h"
#include "support/ThrowAwayFolder.h"

namespace zeltests {

using zelcore::geom::RectF;
using zelui::ArchiveList;
using zelui::DialogLayoutItem;

namespace {

/// What the plug-in manager's behaviour depends on of a node of its archive.
struct Expected {
    int depth;
    const char* adapter;  ///< behind "zelui::"
    const char* className;
    const char* id;
    RectF bounds;
    long constraints;
    const char* flow;
    const char* text;

    bool operator==(const Expected& other) const {
        return depth == other.depth && std::string(adapter) == other.adapter &&
               std::string(className) == other.className && std::string(id) == other.id && bounds == other.bounds &&
               constraints == other.constraints && std::string(flow) == other.flow && std::string(text) == other.text;
    }
};

std::ostream& operator<<(std::ostream& out, const Expected& row) {
    return out << row.depth << " " << row.adapter << " [" << row.className << "] " << row.id << " " << row.bounds.left
               << " " << row.bounds.top << " " << row.bounds.width << " " << row.bounds.height << " | "
               << row.constraints << " " << row.flow << " \"" << row.text << "\"";
}

// clang-format off
const std::vector<Expected> kTable = {
    {0, "ui::UI_SubView", "", "UI_SubView", {0, 0, 737, 470}, 0, "vertical", ""},
    {1, "controls::UI_StaticText", "", "UI_StaticText", {14, 8, 703, 19}, 4, "", "($$$/PluginManager/Dialog/VSTPluginFolders=VST Plug-In Folders:)"},
    {1, "ui::UI_SubView", "BoxView", "UI_SubView", {14, 28, 706, 31}, 4, "", ""},
    {2, "ui::UI_SubView", "", "UI_SubView", {4, 6, 273, 19}, 0, "horizontal", ""},
    {3, "controls::UI_TextButton", "", "AddDirectoryButton", {4, 0, 80, 19}, 0, "", "($$$/PluginManager/Dialog/Add=Add...)"},
    {3, "controls::UI_TextButton", "", "RemoveDirectoryButton", {94, 0, 80, 19}, 0, "", "($$$/PluginManager/Dialog/Remove=Remove)"},
    {3, "controls::UI_TextButton", "", "DefaultDirectoriesButton", {184, 0, 80, 19}, 0, "", "($$$/PluginManager/Dialog/Default=Default)"},
    {1, "controls::UI_MultiColumnTree", "", "DirectoryList", {14, 58, 706, 62}, 4, "", ""},
    {1, "controls::UI_StaticText", "", "UI_StaticText", {14, 134, 706, 19}, 0, "", "($$$/PluginManager/Dialog/AvailablePlugins=Available Plug-Ins:)"},
    {1, "ui::UI_SubView", "BoxView", "UI_SubView", {14, 154, 706, 31}, 4, "horizontal", ""},
    {2, "ui::UI_SubView", "", "UI_SubView", {4, 4, 450, 19}, 0, "horizontal", ""},
    {3, "controls::UI_TextButton", "", "UpdateButton", {4, 0, 110, 19}, 0, "", "($$$/PluginManager/Dialog/Scan=Scan for Plug-Ins)"},
    {3, "controls::UI_Checkbox", "", "RescanExisting", {125, 3, 80, 14}, 0, "", "($$$/PluginManager/Dialog/RescanExisting=Rescan existing plug-ins)"},
    {3, "controls::UI_TextButton", "", "EnableAllButton", {218, 0, 80, 19}, 0, "", "($$$/PluginManager/Dialog/EnableAll=Enable All)"},
    {3, "controls::UI_TextButton", "", "DisableAllButton", {308, 0, 80, 19}, 0, "", "($$$/PluginManager/Dialog/DisableAll=Disable All)"},
    {3, "controls::UI_Checkbox", "", "SeparateProcess", {397, 3, 49, 14}, 0, "", "($$$/PluginManager/Dialog/SeparateProcess=Separate process)"},
    {2, "controls::UI_StaticText", "", "FindStaticText", {463, 4, 53, 20}, 5, "", "($$$/PluginManager/Dialog/Filter=Filter:)"},
    {2, "controls::UI_ClearButtonTextEdit", "UI_SearchBox", "FindTextEdit", {525, 4, 173, 20}, 5, "", ""},
    {1, "controls::UI_MultiColumnTree", "PluginMultiColumnTree", "PluginList", {14, 184, 706, 236}, 12, "", ""},
    {1, "ui::UI_SubView", "", "UI_SubView", {19, 435, 698, 19}, 14, "horizontal", ""},
    {2, "controls::UI_TextButton", "", "OKButton", {531, 0, 77, 19}, 5, "", "($$$/PluginManager/Dialog/OK=OK)"},
    {2, "controls::UI_TextButton", "", "CancelButton", {621, 0, 77, 19}, 5, "", "($$$/PluginManager/Dialog/Cancel=Cancel)"},
};
// clang-format on

const std::string kPrefix = "zelui::";

std::string ReadShipped() { return ReadFile(std::string(ZEL_RESOURCES) + "/AudioPluginManager.xml"); }

/// The value of the first section that has the key; null without one.
const ArchiveList* FindSection(const ArchiveList& sections, const std::string& key) {
    for (std::int64_t i = 0; i < sections.GetInteger("count"); ++i) {
        const ArchiveList& section = sections.GetList("section-" + std::to_string(i));
        if (section.Has(key)) return &section;
    }
    return nullptr;
}

std::string GetOptionalText(const ArchiveList* list, const char* key) {
    return list != nullptr && list->Has(key) ? list->GetText(key) : std::string();
}

std::string GetFlow(const ArchiveList& subView) {
    if (!subView.GetBoolean("AutoLayout")) return "";
    return subView.GetBoolean("AutoLayout_Horizontal") ? "horizontal" : "vertical";
}

RectF GetBounds(const ArchiveList& node) {
    const ArchiveList& bounds = node.GetRecord("bounds", 1);
    return {bounds.GetNumber("left"), bounds.GetNumber("top"), bounds.GetNumber("width"), bounds.GetNumber("height")};
}

/// Goes through the nodes as they stand in the file, each before its children, and compares each with its row.
class TableWalk {
public:
    void Compare(const ArchiveList& node, int depth) {
        ASSERT_LT(mRow, kTable.size()) << "more nodes than rows";
        const ArchiveList& sections = node.GetList("sections");
        const ArchiveList& own = *FindSection(sections, "bounds");
        const ArchiveList& subView = *FindSection(sections, "Constraints");
        const std::string adapter = node.GetText("adapter");
        ASSERT_EQ(adapter.substr(0, kPrefix.size()), kPrefix);
        const std::string className = GetOptionalText(&node, "className");
        const std::string text = GetOptionalText(FindSection(sections, "text"), "text");
        const std::string flow = GetFlow(subView);
        const Expected found = {depth,
                                adapter.c_str() + kPrefix.size(),
                                className.c_str(),
                                own.GetText("id").c_str(),
                                GetBounds(own),
                                long(subView.GetRecord("Constraints", 4).GetInteger("constraints")),
                                flow.c_str(),
                                text.c_str()};
        EXPECT_EQ(found, kTable[mRow]);
        ++mRow;
        const ArchiveList* const parent = FindSection(sections, "children");
        if (parent == nullptr) return;
        const ArchiveList& children = parent->GetList("children");
        for (std::size_t i = 0; i < children.GetPairs().size(); ++i)
            Compare(children.GetList("child-" + std::to_string(i)), depth + 1);
    }
    std::size_t GetCount() const { return mRow; }

private:
    std::size_t mRow = 0;
};

std::size_t Count(const zelui::ArchivedNode& node) {
    std::size_t count = 1;
    for (const zelui::ArchivedNode& child : node.children) count += Count(child);
    return count;
}

/// In the order of the table.
void Flatten(const DialogLayoutItem& item, std::vector<zelui::ui::UI_Node*>& nodes) {
    nodes.push_back(item.node.get());
    for (const DialogLayoutItem& child : item.children) Flatten(child, nodes);
}

template <typename T>
bool Is(const zelui::ui::UI_Node* node) {
    return typeid(*node) == typeid(T);
}

bool IsOfAdapter(const zelui::ui::UI_Node* node, const std::string& adapter) {
    if (adapter == "ui::UI_SubView") return Is<zelui::ui::UI_SubView>(node);
    if (adapter == "controls::UI_StaticText") return Is<zelui::controls::UI_StaticText>(node);
    if (adapter == "controls::UI_TextButton") return Is<zelui::controls::UI_TextButton>(node);
    if (adapter == "controls::UI_Checkbox") return Is<zelui::controls::UI_Checkbox>(node);
    if (adapter == "controls::UI_ClearButtonTextEdit") return Is<zelui::controls::UI_ClearButtonTextEdit>(node);
    return adapter == "controls::UI_MultiColumnTree" && Is<zelui::controls::UI_MultiColumnTree>(node);
}

}  // namespace

TEST(AudioPluginManagerArchiveTest, EveryNodeIsAsTheTableSaysAndThereAreNoOthers) {
    const ArchiveList map = zelui::ReadPropertyMap(ReadShipped());
    EXPECT_EQ(map.GetInteger("UINodeArchive"), 1);
    TableWalk walk;
    walk.Compare(map.GetList("root"), 0);
    EXPECT_EQ(walk.GetCount(), kTable.size());
    EXPECT_EQ(Count(zelui::ReadArchivedNodes(ReadShipped())), kTable.size());
}

TEST(AudioPluginManagerArchiveTest, TheFactoryIsAskedForTheThreeClassNamesAndNothingElse) {
    std::vector<std::string> asked;
    std::vector<const zelui::ui::UI_Node*> made;
    const DialogLayoutItem root =
        zelui::BuildArchivedNodes(zelui::ReadArchivedNodes(ReadShipped()), [&](const zelcore::ustring& className) {
            const zelcore::utf8string name = zelcore::utility::UTF16to8(className);
            asked.emplace_back(name.begin(), name.end());
            const boost::intrusive_ptr<zelui::ui::UI_Node> node(new TestNode);
            made.push_back(node.get());
            return node;
        });
    EXPECT_EQ(asked, (std::vector<std::string>{"BoxView", "BoxView", "UI_SearchBox", "PluginMultiColumnTree"}));
    std::vector<zelui::ui::UI_Node*> nodes;
    Flatten(root, nodes);
    ASSERT_EQ(nodes.size(), kTable.size());
    for (std::size_t i = 0; i < nodes.size(); ++i) {
        const bool isMade = std::find(made.begin(), made.end(), nodes[i]) != made.end();
        EXPECT_EQ(isMade, std::string(kTable[i].className) != "") << kTable[i];
    }
}

TEST(AudioPluginManagerArchiveTest, WithoutAFactoryEveryNodeIsMadeByItsAdapter) {
    const DialogLayoutItem root = zelui::BuildArchivedNodes(zelui::ReadArchivedNodes(ReadShipped()), {});
    std::vector<zelui::ui::UI_Node*> nodes;
    Flatten(root, nodes);
    ASSERT_EQ(nodes.size(), kTable.size());
    for (std::size_t i = 0; i < nodes.size(); ++i) EXPECT_TRUE(IsOfAdapter(nodes[i], kTable[i].adapter)) << kTable[i];
}

}  // namespace zeltests
