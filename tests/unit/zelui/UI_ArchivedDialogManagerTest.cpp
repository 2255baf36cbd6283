#include <gtest/gtest.h>
#include <QAbstractButton>
#include <QLabel>
#include <string>
#include <vector>

#include <zelcore/Localizer.h>
#include <zelui/UI_ClearButtonTextEdit.h>
#include <zelui/UI_MultiColumnTree.h>
#include <zelui/UI_StaticText.h>
#include <zelui/UI_TextButton.h>

#include "ArchivedDialogTools.h"
#include "NodeTools.h"
#include "support/ThrowAwayFolder.h"

namespace zeltests {

using zelcore::geom::RectF;
using zelui::ui::UI_Container;
using zelui::ui::UI_Node;

namespace {

const auto kOK = zelui::ui::UI_DialogViewContainer::kResponseOK;
const char* const kIds[] = {"AddDirectoryButton", "RemoveDirectoryButton", "DefaultDirectoriesButton",
                            "DirectoryList",      "UpdateButton",          "RescanExisting",
                            "EnableAllButton",    "DisableAllButton",      "SeparateProcess",
                            "FindStaticText",     "FindTextEdit",          "PluginList",
                            "OKButton",           "CancelButton"};

boost::intrusive_ptr<UI_Node> MakeManagerNode(const zelcore::ustring& className) {
    if (className == U("BoxView")) return boost::intrusive_ptr<UI_Node>(new zelui::ui::UI_SubView);
    if (className == U("PluginMultiColumnTree")) return new zelui::controls::UI_MultiColumnTree;
    if (className == U("UI_SearchBox")) return new zelui::controls::UI_SearchBox;
    return nullptr;
}

TestDialogPtr MakeManager() {
    return new TestDialog(ReadFile(std::string(ZEL_RESOURCES) + "/AudioPluginManager.xml"), &MakeManagerNode);
}

/// A language that needs much room, for the time of a test.
class LongTexts {
public:
    LongTexts() {
        WriteFile(mFolder.Path("de.json"), R"({
            "/PluginManager/Dialog/VSTPluginFolders": "Ordner, in denen VST-Zusatzmodule gesucht werden:",
            "/PluginManager/Dialog/Add": "Ordner hinzufügen …",
            "/PluginManager/Dialog/Remove": "Ausgewählte entfernen",
            "/PluginManager/Dialog/Default": "Auf Standardordner zurücksetzen",
            "/PluginManager/Dialog/AvailablePlugins": "Verfügbare Zusatzmodule:",
            "/PluginManager/Dialog/Scan": "Nach Zusatzmodulen suchen",
            "/PluginManager/Dialog/RescanExisting": "Vorhandene Zusatzmodule erneut überprüfen",
            "/PluginManager/Dialog/EnableAll": "Alle aktivieren",
            "/PluginManager/Dialog/DisableAll": "Alle deaktivieren",
            "/PluginManager/Dialog/SeparateProcess": "In eigenem Prozess",
            "/PluginManager/Dialog/Filter": "Suchbegriff:",
            "/PluginManager/Dialog/OK": "Übernehmen und schließen",
            "/PluginManager/Dialog/Cancel": "Änderungen verwerfen"})");
        zelcore::config::Localizer::GetInstance().LoadDictionary(zelcore::filesupport::File(mFolder.UPath("de.json")));
    }
    ~LongTexts() { zelcore::config::Localizer::GetInstance().Clear(); }

private:
    ThrowAwayFolder mFolder;
};

RectF FrameOf(const TestDialogPtr& dialog, const char* id) { return dialog->GetNodeForID(id)->UI_GetLocalRectF(); }

bool Overlap(const RectF& a, const RectF& b) {
    return a.left < b.Right() && b.left < a.Right() && a.top < b.Bottom() && b.top < a.Bottom();
}

/// Boxes touch the lists below them, by one line.
RectF WithoutEdge(const RectF& frame) { return {frame.left + 1, frame.top + 1, frame.width - 2, frame.height - 2}; }

// Of what the archive has: lists have nodes of their own.
void ExpectInOrder(const UI_Node& node) {
    if (dynamic_cast<const zelui::controls::UI_ControlView*>(&node) != nullptr) return;
    const UI_Container* const container = node.UI_AsContainer();
    const RectF parent = node.UI_GetLocalRectF();
    for (std::size_t i = 0; container != nullptr && i < container->ChildCount(); ++i) {
        if (!container->ChildAt(i)->UI_IsShown()) continue;
        const RectF frame = container->ChildAt(i)->UI_GetLocalRectF();
        SCOPED_TRACE(std::string(container->ChildAt(i)->UI_GetID().c_str()));
        EXPECT_GE(frame.left, 0.0f);
        EXPECT_GE(frame.top, 0.0f);
        EXPECT_LE(frame.Right(), parent.width);
        EXPECT_LE(frame.Bottom(), parent.height);
        for (std::size_t j = 0; j < i; ++j) {
            if (!container->ChildAt(j)->UI_IsShown()) continue;
            const RectF other = container->ChildAt(j)->UI_GetLocalRectF();
            EXPECT_FALSE(Overlap(WithoutEdge(frame), WithoutEdge(other))) << container->ChildAt(j)->UI_GetID().c_str();
        }
        ExpectInOrder(*container->ChildAt(i));
    }
}

void ExpectTextsInFull(QWidget& window) {
    int texts = 0;
    for (const QAbstractButton* const button : window.findChildren<QAbstractButton*>()) {
        if (!button->isVisible() || button->text().isEmpty()) continue;
        EXPECT_FALSE(button->text().endsWith(QChar(0x2026)) && button->toolTip() != "") << button->text().toStdString();
        ++texts;
    }
    for (const QLabel* const label : window.findChildren<QLabel*>()) {
        EXPECT_TRUE(label->toolTip().isEmpty()) << label->text().toStdString();
        ++texts;
    }
    EXPECT_GE(texts, 13);
}

void ShowAndWait(const TestDialogPtr& dialog) {
    ShowDialog(dialog);
    Settle();
}

}  // namespace

TEST(UI_ArchivedDialogManagerTest, EveryControlIsThereAndOfItsKind) {
    const TestDialogPtr dialog = MakeManager();
    for (const char* id : kIds) EXPECT_NE(dialog->GetNodeForID(id), nullptr) << id;
    EXPECT_NE(dialog->GetNodeForIDAs<zelui::controls::UI_MultiColumnTree>("DirectoryList"), nullptr);
    EXPECT_NE(dialog->GetNodeForIDAs<zelui::controls::UI_SearchBox>("FindTextEdit"), nullptr);
    EXPECT_NE(dialog->GetNodeForIDAs<zelui::controls::UI_TextButton>("UpdateButton"), nullptr);
}

TEST(UI_ArchivedDialogManagerTest, NothingOverlapsAndNoTextIsCutOff) {
    const TestDialogPtr dialog = MakeManager();
    ShowAndWait(dialog);
    EXPECT_GE(dialog->GetContentNode()->UI_GetLocalRectF().width, 737.0f);
    EXPECT_GE(dialog->GetContentNode()->UI_GetLocalRectF().height, 470.0f);
    ExpectInOrder(*dialog->GetContentNode());
    ExpectTextsInFull(*WindowOf(dialog));
    dialog->UI_Close(kOK);
}

TEST(UI_ArchivedDialogManagerTest, NeitherDoLongTexts) {
    const LongTexts texts;
    const TestDialogPtr dialog = MakeManager();
    EXPECT_GT(dialog->GetContentNode()->UI_GetLocalRectF().width, 900.0f);
    ShowAndWait(dialog);
    ExpectInOrder(*dialog->GetContentNode());
    ExpectTextsInFull(*WindowOf(dialog));
    dialog->UI_Close(kOK);
}

TEST(UI_ArchivedDialogManagerTest, WhatFitsStandsWhereTheArchiveHasIt) {
    const TestDialogPtr dialog = MakeManager();
    EXPECT_EQ(FrameOf(dialog, "AddDirectoryButton"), (RectF{4, 0, 80, 19}));
    EXPECT_EQ(FrameOf(dialog, "RemoveDirectoryButton"), (RectF{94, 0, 80, 19}));
    EXPECT_EQ(FrameOf(dialog, "OKButton").width, 77.0f);
    EXPECT_EQ(FrameOf(dialog, "PluginList").height, 236.0f);
    EXPECT_EQ(FrameOf(dialog, "PluginList").top, 184.0f);
    EXPECT_EQ(dialog->GetContentNode()->UI_GetLocalRectF().height, 470.0f);
}

TEST(UI_ArchivedDialogManagerTest, ListsAndButtonsFollowTheWindow) {
    const TestDialogPtr dialog = MakeManager();
    dialog->SetMinimumSize({400, 400});
    ShowAndWait(dialog);
    const RectF root = dialog->GetContentNode()->UI_GetLocalRectF();
    const float rightOfRow =
        root.width - 19 - dialog->GetNodeForID("OKButton")->UI_GetParentNode()->UI_GetLocalRectF().width;
    for (const QSize size : {QSize(1600, 1000), QSize(700, 400), QSize(737, 470)}) {
        WindowOf(dialog)->resize(size);
        ASSERT_TRUE(ProcessUntil(
            [&] { return dialog->GetContentNode()->UI_GetLocalRectF().width == static_cast<float>(size.width()); }));
        Settle();
        const float width = static_cast<float>(size.width());
        const float height = static_cast<float>(size.height());
        EXPECT_EQ(FrameOf(dialog, "PluginList"), (RectF{14, 184, width - 31, height - 234}));
        EXPECT_EQ(FrameOf(dialog, "DirectoryList"), (RectF{14, 58, width - 31, 62}));
        const UI_Node& row = *dialog->GetNodeForID("OKButton")->UI_GetParentNode();
        EXPECT_EQ(row.UI_GetLocalRectF().Bottom(), height - 16);
        EXPECT_EQ(row.UI_GetLocalRectF().Right(), width - rightOfRow);
        EXPECT_EQ(FrameOf(dialog, "CancelButton").Right(), row.UI_GetLocalRectF().width);
        EXPECT_EQ(FrameOf(dialog, "FindTextEdit").Right(), width - 31 - 8);
    }
    WindowOf(dialog)->resize(static_cast<int>(root.width), static_cast<int>(root.height));
    ASSERT_TRUE(ProcessUntil([&] { return dialog->GetContentNode()->UI_GetLocalRectF() == root; }));
    ExpectInOrder(*dialog->GetContentNode());
    dialog->UI_Close(kOK);
}

TEST(UI_ArchivedDialogManagerTest, InASmallWindowItsRowsBreakIntoLinesAndNothingOverlaps) {
    const TestDialogPtr dialog = MakeManager();
    // There is no room for them beside the options: whoever runs the dialog hides them then.
    dialog->GetNodeForID("FindStaticText")->UI_Hide();
    dialog->GetNodeForID("FindTextEdit")->UI_Hide();
    dialog->SetMinimumSize({400, 400});
    ShowAndWait(dialog);
    const RectF options = dialog->GetNodeForID("UpdateButton")->UI_GetParentNode()->UI_GetLocalRectF();
    const QSize before = WindowOf(dialog)->size();
    WindowOf(dialog)->resize(400, 400);
    Settle();
    ExpectInOrder(*dialog->GetContentNode());
    EXPECT_GT(dialog->GetNodeForID("UpdateButton")->UI_GetParentNode()->UI_GetLocalRectF().height, options.height);
    EXPECT_GT(FrameOf(dialog, "PluginList").top, 184);
    EXPECT_EQ(FrameOf(dialog, "PluginList").Bottom(), 350);
    WindowOf(dialog)->resize(before);
    Settle();
    EXPECT_EQ(dialog->GetNodeForID("UpdateButton")->UI_GetParentNode()->UI_GetLocalRectF(), options);
    EXPECT_EQ(FrameOf(dialog, "PluginList").top, 184);
    dialog->UI_Close(kOK);
}

TEST(UI_ArchivedDialogManagerTest, WhatTheProgramMovedBeforeItIsShownIsKept) {
    const TestDialogPtr dialog = MakeManager();
    const boost::intrusive_ptr<UI_Node> check = dialog->GetNodeForID("SeparateProcess");
    const float width = check->UI_GetLocalRectF().width;
    check->UI_Hide();
    UI_Node& row = *check->UI_GetParentNode();
    RectF frame = row.UI_GetLocalRectF();
    frame.width -= width;
    row.UI_SetLocalRectF(frame);
    const RectF before = FrameOf(dialog, "FindTextEdit");
    RectF find = before;
    find.left -= width;
    find.width += width;
    dialog->GetNodeForID("FindTextEdit")->UI_SetLocalRectF(find);
    ShowAndWait(dialog);
    const RectF root = dialog->GetContentNode()->UI_GetLocalRectF();
    WindowOf(dialog)->resize(static_cast<int>(root.width) + 100, static_cast<int>(root.height));
    ASSERT_TRUE(ProcessUntil([&] { return !dialog->sizes.empty(); }));
    EXPECT_EQ(FrameOf(dialog, "FindTextEdit"), (RectF{find.left + 100, find.top, find.width, find.height}));
    EXPECT_EQ(row.UI_GetLocalRectF(), frame);
    dialog->UI_Close(kOK);
}

}  // namespace zeltests
