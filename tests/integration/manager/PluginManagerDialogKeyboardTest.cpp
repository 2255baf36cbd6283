#include <set>

#include <gmock/gmock.h>
#include <QApplication>
#include <QCheckBox>
#include <QPushButton>
#include <zelaudiofilterhost/PluginModuleInfoManager.h>
#include <zelcore/DebugDatabase.h>
#include <zelui/QtBridge.h>

#include "ManagerStage.h"
#include "support/accessibility/SpokenText.h"

namespace zeltests {

using testing::ElementsAre;
using testing::IsEmpty;
using zelui::ui::UI_Node;

namespace {

/// The dialog without a mouse, and as screen readers tell of it.
class PluginManagerDialogKeyboardTest : public ManagerStage {
protected:
    void AddThree() {
        AddPlugin("/p/delay.so", "Delay");
        AddPlugin("/p/chorus.so", "Chorus", false);
        AddPlugin("/q/echo.vst3", "Echo", true, zelaudiofilterhost::kTechnologyVST3);
    }
    static bool HasFocus(const UI_Node& node) { return node.UI_HasKeyboardFocus(true); }
    /// Goes on with the Tab key until the control has the focus.
    void TabTo(const std::string& id) {
        const UI_Node& node = Find(id);
        for (int i = 0; i < 40 && !HasFocus(node); ++i) PressKey(Qt::Key_Tab);
        EXPECT_TRUE(HasFocus(node)) << id;
    }
    static std::string GetSpokenName(const UI_Node& node) {
        QWidget* const widget = zelui::qt::GetWidget(node);
        if (widget == nullptr) return "no widget";
        return zeltests::GetSpokenName(*widget).toStdString();
    }
};

}  // namespace

TEST_F(PluginManagerDialogKeyboardTest, TheTabKeyReachesEveryControlThatCanBeUsed) {
    zelcore::debug::DebugDatabase::Instance().SetEntry("AudioPluginManager.ShowExternalCheckBox", "true");
    AddThree();
    SetFolders({"/one"});
    SaveCatalogue();
    RunDialog([this] {
        GetWindow().resize(GetWindow().width() + 60, GetWindow().height());
        const std::set<std::string> ids = {"AddDirectoryButton", "DefaultDirectoriesButton",
                                           "DirectoryList",      "UpdateButton",
                                           "RescanExisting",     "EnableAllButton",
                                           "DisableAllButton",   "SeparateProcess",
                                           "FindTextEdit",       "PluginList",
                                           "OKButton",           "CancelButton"};
        std::set<std::string> reached;
        for (int i = 0; i < 40; ++i) {
            for (const std::string& id : ids)
                if (HasFocus(Find(id))) reached.insert(id);
            PressKey(Qt::Key_Tab);
        }
        EXPECT_EQ(reached, ids);
    });
}

TEST_F(PluginManagerDialogKeyboardTest, ControlAndADigitSortByThatColumn) {
    AddThree();
    RunDialog([this] {
        TabTo("PluginList");
        PressKey(Qt::Key_2, Qt::ControlModifier);
        EXPECT_THAT(ReadNames(), ElementsAre("Chorus", "Delay", "Echo"));
        PressKey(Qt::Key_2, Qt::ControlModifier);
        EXPECT_THAT(ReadNames(), ElementsAre("Echo", "Delay", "Chorus"));
        PressKey(Qt::Key_1, Qt::ControlModifier);
        EXPECT_EQ(ReadNames().front(), "Chorus");
    });
    EXPECT_EQ(mSettings.sortColumn, 1u);
    EXPECT_TRUE(mSettings.sortAscending);
}

TEST_F(PluginManagerDialogKeyboardTest, ThePluginThatWasToggledIsStillTheSelectedOneAfterSorting) {
    AddThree();
    RunDialog([this] {
        TabTo("PluginList");
        PressKey(Qt::Key_Home);
        PressKey(Qt::Key_2, Qt::ControlModifier);
        PressKey(Qt::Key_Space);
        EXPECT_FALSE(IsEnabled("/p/delay.so"));
        EXPECT_FALSE(IsEnabled("/p/chorus.so"));
    });
}

TEST_F(PluginManagerDialogKeyboardTest, FoldersAreSelectedAndRemoved) {
    SetFolders({"/one", "/two", "/three"});
    SaveCatalogue();
    RunDialog([this] {
        TabTo("DirectoryList");
        PressKey(Qt::Key_End);
        PressKey(Qt::Key_Up, Qt::ShiftModifier);
        for (int i = 0; i < 10 && !HasFocus(Find("RemoveDirectoryButton")); ++i) PressKey(Qt::Key_Backtab);
        ASSERT_TRUE(HasFocus(Find("RemoveDirectoryButton")));
        PressKey(Qt::Key_Space);
        EXPECT_THAT(GetFolders(), ElementsAre("/one"));
        EXPECT_THAT(Read(GetFolderTree(), 0), ElementsAre("/one"));
    });
}

TEST_F(PluginManagerDialogKeyboardTest, AFolderIsTakenOutOfTheSelectionAndNothingIsRemovedThen) {
    SetFolders({"/one"});
    SaveCatalogue();
    RunDialog([this] {
        TabTo("DirectoryList");
        PressKey(Qt::Key_Home);
        EXPECT_FALSE(Find("RemoveDirectoryButton").UI_IsDisabled());
        PressKey(Qt::Key_Space, Qt::ControlModifier);
        EXPECT_TRUE(Find("RemoveDirectoryButton").UI_IsDisabled());
    });
}

TEST_F(PluginManagerDialogKeyboardTest, ButtonsAndCheckBoxesAreUsedWithTheSpaceBar) {
    AddThree();
    RunDialog([this] {
        TabTo("DisableAllButton");
        PressKey(Qt::Key_Space);
        EXPECT_FALSE(IsEnabled("/q/echo.vst3"));
        TabTo("RescanExisting");
        PressKey(Qt::Key_Space);
        TabTo("OKButton");
        PressKey(Qt::Key_Space);
        EXPECT_EQ(QApplication::activeModalWidget(), nullptr);
    });
    EXPECT_TRUE(mSettings.rescanExisting);
    EXPECT_EQ(mChangedSignals, 1);
}

TEST_F(PluginManagerDialogKeyboardTest, TheControlsOfARowSayWhichPluginTheyAreFor) {
    AddThree();
    Ban("/p/crashes.so");
    RunDialog([this] {
        EXPECT_EQ(GetSpokenName(*GetEnabledBox(0)), "Enable Delay");
        EXPECT_EQ(GetSpokenName(*GetEnabledBox(1)), "Enable Chorus");
        EXPECT_EQ(GetSpokenName(*GetEnabledBox(3)), "Enable crashes");
        EXPECT_EQ(GetSpokenName(*GetReloadButton(3)), "Reload crashes");
    });
}

TEST_F(PluginManagerDialogKeyboardTest, EveryControlAndListHasAName) {
    zelcore::debug::DebugDatabase::Instance().SetEntry("AudioPluginManager.ShowExternalCheckBox", "true");
    AddThree();
    RunDialog([this] {
        for (const char* const id :
             {"AddDirectoryButton", "RemoveDirectoryButton", "DefaultDirectoriesButton", "DirectoryList",
              "UpdateButton", "RescanExisting", "EnableAllButton", "DisableAllButton", "SeparateProcess",
              "FindStaticText", "FindTextEdit", "PluginList", "OKButton", "CancelButton"})
            EXPECT_NE(GetSpokenName(Find(id)), "") << id;
    });
}

}  // namespace zeltests
