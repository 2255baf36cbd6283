#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <random>
#include <string>

#include <zelcore/Localizer.h>
#include <zelcore/Utf.h>
#include <zelui/ArchiveError.h>

#include "../../../frameworks/zelui/src/ArchivedNode.h"
#include "ArchiveTools.h"
#include "support/ThrowAwayFolder.h"

namespace zeltests {

using testing::HasSubstr;
using zelcore::geom::RectF;
using zelcore::utility::UTF8to16;
using zelui::ArchivedNode;
using zelui::ReadArchivedNodes;

namespace {

std::string ErrorOf(const std::string& archive) {
    try {
        ReadArchivedNodes(archive);
    } catch (const zelui::ui::ArchiveError& error) {
        return error.what();
    }
    return "no error";
}

std::string WithText(const std::string& text) { return Archive(Button("B", {0, 0, 1, 1}, text).Write()); }

std::string ManagerArchive() { return ReadFile(std::string(ZEL_RESOURCES) + "/AudioPluginManager.xml"); }

/// A line of what the plug-in manager's dialog is made of.
struct Row {
    int depth;
    const char* adapter;
    const char* className;
    const char* id;
    RectF bounds;
    std::uint32_t constraints;
    char flow;  ///< h, v or a blank
    const char* text;
};

const char kView[] = "zelui::ui::UI_SubView";
const char kText[] = "zelui::controls::UI_StaticText";
const char kButton[] = "zelui::controls::UI_TextButton";
const char kCheckbox[] = "zelui::controls::UI_Checkbox";
const char kTree[] = "zelui::controls::UI_MultiColumnTree";
const char kEdit[] = "zelui::controls::UI_ClearButtonTextEdit";

// clang-format off
const Row kManager[] = {
    {0, kView, "", "UI_SubView", {0, 0, 737, 470}, 0, 'v', ""},
    {1, kText, "", "UI_StaticText", {14, 8, 703, 19}, 4, ' ', "VST Plug-In Folders:"},
    {1, kView, "BoxView", "UI_SubView", {14, 28, 706, 31}, 4, ' ', ""},
    {2, kView, "", "UI_SubView", {4, 6, 273, 19}, 0, 'h', ""},
    {3, kButton, "", "AddDirectoryButton", {4, 0, 80, 19}, 0, ' ', "Add..."},
    {3, kButton, "", "RemoveDirectoryButton", {94, 0, 80, 19}, 0, ' ', "Remove"},
    {3, kButton, "", "DefaultDirectoriesButton", {184, 0, 80, 19}, 0, ' ', "Default"},
    {1, kTree, "", "DirectoryList", {14, 58, 706, 62}, 4, ' ', ""},
    {1, kText, "", "UI_StaticText", {14, 134, 706, 19}, 0, ' ', "Available Plug-Ins:"},
    {1, kView, "BoxView", "UI_SubView", {14, 154, 706, 31}, 4, 'h', ""},
    {2, kView, "", "UI_SubView", {4, 4, 450, 19}, 0, 'h', ""},
    {3, kButton, "", "UpdateButton", {4, 0, 110, 19}, 0, ' ', "Scan for Plug-Ins"},
    {3, kCheckbox, "", "RescanExisting", {125, 3, 80, 14}, 0, ' ', "Rescan existing plug-ins"},
    {3, kButton, "", "EnableAllButton", {218, 0, 80, 19}, 0, ' ', "Enable All"},
    {3, kButton, "", "DisableAllButton", {308, 0, 80, 19}, 0, ' ', "Disable All"},
    {3, kCheckbox, "", "SeparateProcess", {397, 3, 49, 14}, 0, ' ', "Separate process"},
    {2, kText, "", "FindStaticText", {463, 4, 53, 20}, 5, ' ', "Filter:"},
    {2, kEdit, "UI_SearchBox", "FindTextEdit", {525, 4, 173, 20}, 5, ' ', ""},
    {1, kTree, "PluginMultiColumnTree", "PluginList", {14, 184, 706, 236}, 12, ' ', ""},
    {1, kView, "", "UI_SubView", {19, 435, 698, 19}, 14, 'h', ""},
    {2, kButton, "", "OKButton", {531, 0, 77, 19}, 5, ' ', "OK"},
    {2, kButton, "", "CancelButton", {621, 0, 77, 19}, 5, ' ', "Cancel"},
};
// clang-format on

void Flatten(const ArchivedNode& node, int depth, std::vector<std::pair<int, const ArchivedNode*>>& all) {
    all.emplace_back(depth, &node);
    for (const ArchivedNode& child : node.children) Flatten(child, depth + 1, all);
}

char GetFlow(const ArchivedNode& node) {
    if (!node.autoLayout) return ' ';
    return node.autoLayoutHorizontal ? 'h' : 'v';
}

}  // namespace

TEST(ArchivedNodeTest, TheManagersArchiveHasTheNodesOfItsTable) {
    const ArchivedNode root = ReadArchivedNodes(ManagerArchive());
    std::vector<std::pair<int, const ArchivedNode*>> all;
    Flatten(root, 0, all);
    ASSERT_EQ(all.size(), std::size(kManager));
    for (std::size_t i = 0; i < all.size(); ++i) {
        SCOPED_TRACE(i);
        const Row& row = kManager[i];
        const ArchivedNode& node = *all[i].second;
        EXPECT_EQ(all[i].first, row.depth);
        EXPECT_EQ(node.adapter, row.adapter);
        EXPECT_EQ(node.className, UTF8to16(row.className));
        EXPECT_EQ(node.id, row.id);
        EXPECT_EQ(node.bounds, row.bounds);
        EXPECT_EQ(node.constraints, row.constraints);
        EXPECT_EQ(GetFlow(node), row.flow);
        EXPECT_EQ(node.text.value_or(zelcore::ustring()), UTF8to16(row.text));
        EXPECT_TRUE(node.visible);
        EXPECT_TRUE(node.enabled.value_or(true));
        EXPECT_FALSE(node.checked.value_or(false));
        EXPECT_TRUE(node.toolTip.empty());
    }
}

TEST(ArchivedNodeTest, TextsAreTheOnesOfTheUsersLanguage) {
    const ThrowAwayFolder folder;
    WriteFile(folder.Path("de.json"), "{\"/PluginManager/Dialog/OK\": \"Einverstanden\", \"/x\": \"F(a)=b\"}");
    zelcore::config::Localizer::GetInstance().LoadDictionary(zelcore::filesupport::File(folder.UPath("de.json")));
    const ArchivedNode ok = ReadArchivedNodes(WithText("($$$/PluginManager/Dialog/OK=OK)"));
    const ArchivedNode other = ReadArchivedNodes(WithText("($$$/x=A)"));
    zelcore::config::Localizer::GetInstance().Clear();
    EXPECT_EQ(ok.text, UTF8to16("Einverstanden"));
    EXPECT_EQ(other.text, UTF8to16("F(a)=b"));
}

TEST(ArchivedNodeTest, ATextThatIsNoReferenceStaysAsItIs) {
    for (const char* text : {"Plain", "(Bracketed)", "$$$/key=Default", "($$$/key=Default", "($$$/key)", "()", "(", ""})
        EXPECT_EQ(ReadArchivedNodes(WithText(text)).text, UTF8to16(text)) << text;
    EXPECT_EQ(ReadArchivedNodes(WithText("($$$/key=)")).text, zelcore::ustring());
    EXPECT_EQ(ReadArchivedNodes(WithText("($$$/key=A (b) = c)")).text, UTF8to16("A (b) = c"));
}

TEST(ArchivedNodeTest, WhatTheNodeSectionSaysIsRead) {
    NodeText text;
    text.id = "An id";
    text.bounds = {1.5f, -2, 3, 4};
    text.node = Pair("tooltip", Text("($$$/t=Tip)")) + Pair("visible", Bool(false));
    const ArchivedNode node = ReadArchivedNodes(Archive(text.Write()));
    EXPECT_EQ(node.id, "An id");
    EXPECT_EQ(node.bounds, (RectF{1.5f, -2, 3, 4}));
    EXPECT_EQ(node.toolTip, UTF8to16("Tip"));
    EXPECT_FALSE(node.visible);
    text.node = Pair("tooltip", Text("None"));
    EXPECT_TRUE(ReadArchivedNodes(Archive(text.Write())).toolTip.empty());
}

TEST(ArchivedNodeTest, StatesOfControlsAreRead) {
    NodeText text;
    text.kind = "UI_ControlView";
    text.properties = Pair("enabled", Bool(false)) + Pair("wantsFocus", Bool(true));
    const ArchivedNode control = ReadArchivedNodes(Archive(text.Write()));
    EXPECT_EQ(control.enabled, false);
    EXPECT_EQ(control.wantsFocus, true);
    EXPECT_EQ(control.checked, std::nullopt);
    text.kind = "UI_StaticText";
    text.properties = Pair("alignment", List(Pair(".aptype", Signed(2)) + Pair("selected", Signed(2))));
    EXPECT_EQ(ReadArchivedNodes(Archive(text.Write())).alignment, 2);
    text.kind = "UI_Checkbox";
    text.properties = Pair("checked", Bool(true));
    EXPECT_EQ(ReadArchivedNodes(Archive(text.Write())).checked, true);
}

TEST(ArchivedNodeTest, SectionsAndKeysOfOtherVersionsAreSkipped) {
    NodeText text;
    text.kind = "UI_FutureView";
    text.properties = Pair("text", Signed(1)) + Pair("bounds", Text("none"));
    text.node = Pair("future", List(Pair("deep", List(""))));
    text.subView = Pair("AutoLayout_Future", Bool(true));
    EXPECT_EQ(ErrorOf(Archive(text.Write())), "no error");
    EXPECT_EQ(ErrorOf(Map(Pair("UINodeArchive", Unsigned(1)) + Pair("root", text.Write()) + Pair("more", "<true/>"))),
              "no error");
}

TEST(ArchivedNodeTest, AnotherVersionOfNodeArchivesIsAnError) {
    const std::string root = NodeText().Write();
    EXPECT_THAT(ErrorOf(Map(Pair("UINodeArchive", Unsigned(2)) + Pair("root", root))), HasSubstr("line 3: a version"));
    EXPECT_THAT(ErrorOf(Map(Pair("root", root))), HasSubstr("no \"UINodeArchive\""));
    EXPECT_THAT(ErrorOf(Map(Pair("UINodeArchive", Unsigned(1)))), HasSubstr("no \"root\""));
    EXPECT_THAT(ErrorOf(Archive("<true/>")), HasSubstr("\"root\" is not a list"));
}

TEST(ArchivedNodeTest, WhatANodeNeedsMustBeThere) {
    const std::string section = List(Pair("sectionName", Text("UI_SubView")));
    const auto node = [](const std::string& sections) {
        return Archive(List(Pair("adapter", Text("A")) + Pair("sections", List(sections))));
    };
    EXPECT_THAT(ErrorOf(Archive(List(Pair("sections", List(""))))), HasSubstr("no \"adapter\""));
    EXPECT_THAT(ErrorOf(Archive(List(Pair("adapter", Text("A"))))), HasSubstr("no \"sections\""));
    EXPECT_THAT(ErrorOf(node("")), HasSubstr("no \"count\""));
    EXPECT_THAT(ErrorOf(node(Pair("count", Unsigned(0)))), HasSubstr("\"UI_Node\" section"));
    EXPECT_THAT(ErrorOf(node(Pair("count", Unsigned(1)) + Pair("section-0", section))), HasSubstr("\"UI_Node\""));
    EXPECT_THAT(ErrorOf(node(Pair("count", Unsigned(4294967295)) + Pair("section-0", section))),
                HasSubstr("no \"section-1\""));
    EXPECT_THAT(ErrorOf(node(Pair("count", Unsigned(1)) + Pair("section-0", List("")))), HasSubstr("sectionName"));
}

TEST(ArchivedNodeTest, BoundsOutOfReachAreErrors) {
    NodeText text;
    for (const RectF& bounds : {RectF{17000000, 0, 1, 1}, RectF{0, -17000000, 1, 1}, RectF{0, 0, 17000000, 1},
                                RectF{15000000, 0, 15000000, 1}, RectF{0, 0, 1, 3e38f}, RectF{0, 0, -1, 1}}) {
        text.bounds = bounds;
        EXPECT_THAT(ErrorOf(Archive(text.Write())), HasSubstr("bounds")) << bounds.left << " " << bounds.width;
    }
    text.bounds = {-16000000, 0, 16000000, 16000000};
    EXPECT_EQ(ErrorOf(Archive(text.Write())), "no error");
}

TEST(ArchivedNodeTest, NodesThatAreTooDeepOrTooManyAreErrors) {
    NodeText deep;
    for (int i = 0; i < 33; ++i) {
        NodeText outer;
        outer.children.push_back(deep);
        deep = outer;
    }
    EXPECT_THAT(ErrorOf(Archive(deep.Write())), HasSubstr("too deep"));
    NodeText many;
    NodeText row;
    row.children.resize(500);
    many.children.assign(3, row);
    // More would not fit into what an archive may be.
    EXPECT_NE(ErrorOf(Archive(many.Write())), "no error");
}

TEST(ArchivedNodeTest, AnArchiveThatIsCutOffIsAnErrorEverywhere) {
    const std::string archive = ManagerArchive();
    for (std::size_t length = 0; length + 20 < archive.size(); length += 997)
        EXPECT_NE(ErrorOf(archive.substr(0, length)), "no error") << length;
}

TEST(ArchivedNodeTest, FlippedBytesGiveAnErrorOrNodesInReach) {
    const std::string archive = ManagerArchive();
    std::mt19937 random(4711);
    int errors = 0;
    for (int round = 0; round < 300; ++round) {
        std::string flipped = archive;
        for (int i = 0; i < 1 + round % 4; ++i) {
            const std::size_t at = random() % flipped.size();
            flipped[at] = static_cast<char>(flipped[at] ^ static_cast<char>(1 << random() % 8));
        }
        try {
            std::vector<std::pair<int, const ArchivedNode*>> all;
            const ArchivedNode root = ReadArchivedNodes(flipped);
            Flatten(root, 0, all);
            for (const auto& [depth, node] : all) EXPECT_LE(std::abs(node->bounds.Right()), 16000000.0f);
        } catch (const zelui::ui::ArchiveError&) {
            ++errors;
        }
    }
    EXPECT_GT(errors, 50);
}

}  // namespace zeltests
