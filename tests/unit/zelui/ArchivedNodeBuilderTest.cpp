#include <gtest/gtest.h>
#include <random>
#include <string>

#include <zelui/ArchiveError.h>
#include <zelui/UI_Checkbox.h>
#include <zelui/UI_ClearButtonTextEdit.h>
#include <zelui/UI_MultiColumnTree.h>
#include <zelui/UI_NodeManager.h>
#include <zelui/UI_Popup.h>
#include <zelui/UI_Slider.h>
#include <zelui/UI_StaticText.h>
#include <zelui/UI_TextButton.h>

#include "../../../frameworks/zelui/src/ArchivedNodeBuilder.h"
#include "../../../frameworks/zelui/src/DialogLayout.h"
#include "../../../frameworks/zelui/src/DialogLayoutGrowth.h"
#include "ArchiveTools.h"
#include "support/ThrowAwayFolder.h"

namespace zeltests {

using zelcore::geom::RectF;
using zelui::ArchivedNode;
using zelui::BuildArchivedNodes;
using zelui::DialogLayoutItem;

namespace {

template <typename Node>
bool Makes(const char* adapter) {
    ArchivedNode archived;
    archived.adapter = adapter;
    return dynamic_cast<const Node*>(BuildArchivedNodes(archived, {}).node.get()) != nullptr;
}

}  // namespace

TEST(ArchivedNodeBuilderTest, EachAdapterMakesItsNode) {
    EXPECT_TRUE(Makes<zelui::ui::UI_SubView>("zelui::ui::UI_SubView"));
    EXPECT_TRUE(Makes<zelui::controls::UI_Checkbox>("zelui::controls::UI_Checkbox"));
    EXPECT_TRUE(Makes<zelui::controls::UI_ClearButtonTextEdit>("zelui::controls::UI_ClearButtonTextEdit"));
    EXPECT_TRUE(Makes<zelui::controls::UI_MultiColumnTree>("zelui::controls::UI_MultiColumnTree"));
    EXPECT_TRUE(Makes<zelui::controls::UI_Popup>("zelui::controls::UI_Popup"));
    EXPECT_TRUE(Makes<zelui::controls::UI_SearchBox>("zelui::controls::UI_SearchBox"));
    EXPECT_TRUE(Makes<zelui::controls::UI_Slider>("zelui::controls::UI_Slider"));
    EXPECT_TRUE(Makes<zelui::controls::UI_StaticText>("zelui::controls::UI_StaticText"));
    EXPECT_TRUE(Makes<zelui::controls::UI_TextButton>("zelui::controls::UI_TextButton"));
    EXPECT_TRUE(Makes<zelui::controls::UI_TextEdit>("zelui::controls::UI_TextEdit"));
}

TEST(ArchivedNodeBuilderTest, AnAdapterThatIsNotKnownIsAnErrorThatNamesIt) {
    ArchivedNode archived;
    archived.line = 12;
    for (const char* adapter : {"", "UI_SubView", "zelui::ui::UI_SubView ", "zelui::ui::UI_Node"}) {
        archived.adapter = adapter;
        try {
            BuildArchivedNodes(archived, {});
            FAIL() << adapter;
        } catch (const zelui::ui::ArchiveError& error) {
            EXPECT_EQ(error.what(), std::string("line 12: no node is known by the adapter \"") + adapter + "\"");
        }
    }
}

TEST(ArchivedNodeBuilderTest, AnAlignmentThatIsNoneIsLeftOut) {
    ArchivedNode archived;
    archived.adapter = "zelui::controls::UI_StaticText";
    for (const int alignment : {-1, 3, 1000}) {
        archived.alignment = alignment;
        const DialogLayoutItem item = BuildArchivedNodes(archived, {});
        EXPECT_EQ(static_cast<const zelui::controls::UI_StaticText&>(*item.node).GetAlignment(),
                  zelui::controls::kAlignLeft);
    }
}

TEST(ArchivedNodeBuilderTest, FlippedBytesGiveAnErrorOrADialogThatCanBeLaidOut) {
    const std::string archive = ReadFile(std::string(ZEL_RESOURCES) + "/AudioPluginManager.xml");
    const std::size_t nodes = zelui::ui::UI_NodeManager::Get(false).GetNodeCount();
    std::mt19937 random(815);
    int built = 0;
    for (int round = 0; round < 200; ++round) {
        std::string flipped = archive;
        // Frames and masks become other ones, which are still numbers.
        for (const std::string& before : {std::string("<float>"), std::string("\"unsigned\" size=\"32\">")}) {
            for (int i = 0; i < 5; ++i) {
                const std::size_t at = flipped.find(before, random() % flipped.size());
                if (at != std::string::npos) flipped[at + before.size()] = static_cast<char>('0' + random() % 10);
            }
        }
        try {
            DialogLayoutItem root = BuildArchivedNodes(zelui::ReadArchivedNodes(flipped), {});
            GrowForTexts(root);
            zelui::DialogLayout layout(root);
            const RectF frame = root.node->UI_GetLocalRectF();
            layout.SetSize({1, 1});
            layout.SetSize({frame.width, frame.height});
            EXPECT_EQ(root.node->UI_GetLocalRectF().width, frame.width);
            ++built;
        } catch (const zelui::ui::ArchiveError&) {
            continue;
        }
    }
    EXPECT_GT(built, 0);
    EXPECT_EQ(zelui::ui::UI_NodeManager::Get(false).GetNodeCount(), nodes);
}

}  // namespace zeltests
