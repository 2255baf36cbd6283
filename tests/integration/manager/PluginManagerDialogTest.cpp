#include <filesystem>
#include <typeinfo>

#include <gmock/gmock.h>
#include <QApplication>
#include <QCheckBox>
#include <QFileDialog>
#include <QLineEdit>
#include <QMessageBox>
#include <QPushButton>
#include <QTest>
#include <zelaudiofilterhost/BannedPluginManager.h>
#include <zelaudiofilterhost/PluginModuleInfoManager.h>
#include <zelcore/DebugDatabase.h>
#include <zelcore/FileError.h>
#include <zelcore/Utf.h>
#include <zelui/QtBridge.h>

#include "ManagerStage.h"
#include "support/accessibility/SpokenText.h"

namespace zeltests {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::UnorderedElementsAre;
using zelaudiofilterhost::PluginModuleInfoManager;
using zelcore::geom::RectF;
using zelui::controls::UI_Checkbox;

namespace {

constexpr int kEnabledColumn = 0;
constexpr int kNameColumn = 1;
constexpr int kTypeColumn = 2;
constexpr int kStatusColumn = 3;
constexpr int kPathColumn = 4;

class PluginManagerDialogTest : public ManagerStage {
protected:
    void AddThree() {
        AddPlugin("/p/delay.so", "Delay");
        AddPlugin("/p/chorus.so", "Chorus", false);
        AddPlugin("/q/echo.vst3", "Echo", true, zelaudiofilterhost::kTechnologyVST3);
    }
    void SetKey(const char* key) { zelcore::debug::DebugDatabase::Instance().SetEntry(key, "true"); }
    /// Answers the box that comes up next, with a mouse click on the button of that text.
    void AnswerBox(const QString& text) {
        WhenTrue([this] { return FindBox() != nullptr; },
                 [this, text] {
                     mBoxText = dynamic_cast<QMessageBox&>(*FindBox()).text().toStdString();
                     for (QPushButton* button : FindBox()->findChildren<QPushButton*>())
                         if (button->text().remove('&') == text) return QTest::mouseClick(button, Qt::LeftButton);
                     ADD_FAILURE() << "no such button";
                     QTest::keyClick(FindBox(), Qt::Key_Escape);
                 });
    }
    /// Types a path into the folder chooser that comes up next, or cancels it.
    void ChooseFolder(const std::string& path) {
        WhenTrue([this] { return FindBox() != nullptr && FindBox()->isActiveWindow() && FindField() != nullptr; },
                 [this, path] {
                     mBoxTitle = FindBox()->windowTitle().toStdString();
                     if (path.empty()) return QTest::keyClick(FindBox(), Qt::Key_Escape);
                     QLineEdit* const field = FindField();
                     field->setFocus();
                     field->selectAll();
                     QTest::keyClicks(field, QString::fromStdString(path));
                     QTest::keyClick(field, Qt::Key_Return);
                 });
    }

    QLineEdit* FindField() const { return FindBox()->findChild<QLineEdit*>("fileNameEdit"); }

    std::string mBoxText;
    std::string mBoxTitle;
};

}  // namespace

// The list

TEST_F(PluginManagerDialogTest, EveryEffectIsListedAndInstrumentsAreNot) {
    AddThree();
    AddPlugin("/p/piano.so", "Piano", true, zelaudiofilterhost::kTechnologyVST, true);
    RunDialog([this] {
        EXPECT_THAT(ReadNames(), ElementsAre("Delay", "Chorus", "Echo"));
        EXPECT_THAT(Read(GetPlugins(), kTypeColumn), ElementsAre("VST", "VST", "VST3"));
        EXPECT_THAT(Read(GetPlugins(), kStatusColumn), ElementsAre("Working", "Working", "Working"));
        EXPECT_THAT(Read(GetPlugins(), kPathColumn), ElementsAre("/p/delay.so", "/p/chorus.so", "/q/echo.vst3"));
        EXPECT_TRUE(GetEnabledBox(0)->IsChecked());
        EXPECT_FALSE(GetEnabledBox(1)->IsChecked());
        EXPECT_EQ(GetReloadButton(0), nullptr);
    });
}

TEST_F(PluginManagerDialogTest, ABannedPluginIsListedAsNotWorkingWithAReloadButton) {
    AddThree();
    Ban("/p/crashes.so");
    Ban("/p/hangs.vst3", zelaudiofilterhost::kTechnologyVST3);
    RunDialog([this] {
        EXPECT_THAT(ReadNames(), ElementsAre("Delay", "Chorus", "Echo", "crashes", "hangs"));
        EXPECT_THAT(Read(GetPlugins(), kTypeColumn), ElementsAre("VST", "VST", "VST3", "VST", "VST3"));
        EXPECT_EQ(Read(GetPlugins(), kStatusColumn)[3], "Not Working");
        ASSERT_NE(GetEnabledBox(3), nullptr);
        EXPECT_TRUE(GetEnabledBox(3)->UI_IsDisabled());
        EXPECT_FALSE(GetEnabledBox(3)->IsChecked());
        ASSERT_NE(GetReloadButton(3), nullptr);
        EXPECT_EQ(ToBytes(GetReloadButton(3)->GetText()), "Reload");
    });
}

TEST_F(PluginManagerDialogTest, TheDeveloperKeyGivesEveryRowAReloadButton) {
    SetKey("AlwaysShowPlugInRescanButton");
    AddThree();
    RunDialog([this] {
        for (std::size_t row = 0; row < 3; ++row) EXPECT_NE(GetReloadButton(row), nullptr) << row;
    });
}

TEST_F(PluginManagerDialogTest, ControlsExistForVisibleRowsOnly) {
    for (int i = 0; i < 1000; ++i) AddPlugin("/p/" + std::to_string(i) + ".so", "P" + std::to_string(i));
    RunDialog([this] {
        const auto count = [this] { return GetWindow().findChildren<QCheckBox*>().size(); };
        ProcessUntil([&] { return count() > 2; });
        EXPECT_LT(count(), 60);
        EXPECT_EQ(GetEnabledBox(999), nullptr);
        GetPlugins().ScrollToRow(GetPlugins().GetRowAt(999));
        EXPECT_NE(GetEnabledBox(999), nullptr);
        EXPECT_EQ(GetEnabledBox(0), nullptr);
    });
}

TEST_F(PluginManagerDialogTest, AClickOnACheckBoxTogglesThePluginAtOnce) {
    AddThree();
    RunDialog([this] {
        ClickNode(*GetEnabledBox(0));
        EXPECT_FALSE(IsEnabled("/p/delay.so"));
        ClickNode(*GetEnabledBox(1));
        EXPECT_TRUE(IsEnabled("/p/chorus.so"));
        Click("OKButton");
    });
    EXPECT_FALSE(IsEnabled("/p/delay.so"));
    EXPECT_EQ(mChangedSignals, 1);
}

TEST_F(PluginManagerDialogTest, TheSpaceBarTogglesTheSelectedPlugin) {
    AddThree();
    RunDialog([this] {
        ASSERT_TRUE(GetPlugins().UI_GainKeyboardFocus(zelui::ui::kFocusByProgram));
        PressKey(Qt::Key_Home);
        PressKey(Qt::Key_Space);
        EXPECT_FALSE(IsEnabled("/p/delay.so"));
        PressKey(Qt::Key_Down);
        PressKey(Qt::Key_Space);
        EXPECT_TRUE(IsEnabled("/p/chorus.so"));
    });
}

TEST_F(PluginManagerDialogTest, ReturnAfterAClickOnACheckBoxIsOKAndLeavesTheChoice) {
    AddThree();
    SaveCatalogue();
    RunDialog([this] {
        ClickNode(*GetEnabledBox(0));
        EXPECT_FALSE(IsEnabled("/p/delay.so"));
        PressKey(Qt::Key_Return);
        EXPECT_EQ(QApplication::activeModalWidget(), nullptr);
    });
    EXPECT_FALSE(IsEnabled("/p/delay.so"));
    EXPECT_EQ(mChangedSignals, 1);
}

TEST_F(PluginManagerDialogTest, TheTabKeyGoesThroughTheControlsOfTheRowAndOutOfTheList) {
    AddThree();
    Ban("/p/crashes.so");
    RunDialog([this] {
        ASSERT_TRUE(GetPlugins().UI_GainKeyboardFocus(zelui::ui::kFocusByProgram));
        PressKey(Qt::Key_End);
        GetPlugins().SyncVisibility();
        for (int i = 0; i < 4 && GetPlugins().UI_HasKeyboardFocus(true); ++i) PressKey(Qt::Key_Tab);
        EXPECT_TRUE(Find("OKButton").UI_HasKeyboardFocus(false));
    });
}

TEST_F(PluginManagerDialogTest, TheKeyboardStartsInTheDialogsFirstControl) {
    AddThree();
    RunDialog([this] { EXPECT_TRUE(Find("AddDirectoryButton").UI_HasKeyboardFocus(false)); });
}

TEST_F(PluginManagerDialogTest, APluginOfEachFormatIsCalledByIt) {
    Ban("/p/a.component", zelaudiofilterhost::kTechnologyAU);
    RunDialog([this] { EXPECT_THAT(Read(GetPlugins(), kTypeColumn), ElementsAre("AU")); });
}

TEST_F(PluginManagerDialogTest, SortingByEnabledPutsDisabledAndBannedOnesFirst) {
    AddThree();
    Ban("/p/crashes.so");
    RunDialog([this] {
        ClickHeader(kEnabledColumn);
        EXPECT_THAT(ReadNames(), ElementsAre("Chorus", "crashes", "Delay", "Echo"));
        ClickHeader(kEnabledColumn);
        EXPECT_THAT(ReadNames(), ElementsAre("Delay", "Echo", "Chorus", "crashes"));
    });
}

TEST_F(PluginManagerDialogTest, SortingByAnyOtherColumnGoesByTheShownText) {
    AddThree();
    Ban("/a/broken.so");
    RunDialog([this] {
        ClickHeader(kNameColumn);
        EXPECT_THAT(ReadNames(), ElementsAre("broken", "Chorus", "Delay", "Echo"));
        ClickHeader(kTypeColumn);
        EXPECT_EQ(ReadNames().back(), "Echo");
        ClickHeader(kStatusColumn);
        EXPECT_EQ(ReadNames().front(), "broken");
        ClickHeader(kPathColumn);
        EXPECT_THAT(ReadNames(), ElementsAre("broken", "Chorus", "Delay", "Echo"));
        ClickHeader(kPathColumn);
        EXPECT_THAT(ReadNames(), ElementsAre("Echo", "Delay", "Chorus", "broken"));
    });
    EXPECT_EQ(mSettings.sortColumn, 5u);
    EXPECT_FALSE(mSettings.sortAscending);
}

TEST_F(PluginManagerDialogTest, TheRememberedSortOrderIsApplied) {
    AddThree();
    mSettings.sortColumn = 2;
    mSettings.sortAscending = true;
    RunDialog([this] { EXPECT_THAT(ReadNames(), ElementsAre("Chorus", "Delay", "Echo")); });
    EXPECT_EQ(mSettings.sortColumn, 2u);
    EXPECT_TRUE(mSettings.sortAscending);
}

TEST_F(PluginManagerDialogTest, FittedColumnsAreNeverNarrowerThanTheyBegin) {
    AddPlugin("/p/a.so", "A");
    RunDialog([this] {
        const auto header = GetPlugins().GetHeaderRow();
        EXPECT_EQ(header->GetColumnWidth(1), 70.0f);
        EXPECT_EQ(header->GetColumnWidth(2), 140.0f);
        EXPECT_EQ(header->GetColumnWidth(3), 70.0f);
        EXPECT_GE(header->GetColumnWidth(4), 70.0f);
        EXPECT_EQ(header->GetColumnWidth(5), 240.0f);
    });
}

TEST_F(PluginManagerDialogTest, LongTextsWidenTheirColumns) {
    AddPlugin("/p/" + std::string(100, 'x') + ".so", std::string(60, 'N'));
    RunDialog([this] {
        const auto header = GetPlugins().GetHeaderRow();
        EXPECT_GT(header->GetColumnWidth(2), 300.0f);
        EXPECT_GT(header->GetColumnWidth(5), 400.0f);
    });
}

// Finding

TEST_F(PluginManagerDialogTest, WhatIsTypedFindsNamesAndPathsWithoutRegardToAsciiCase) {
    AddThree();
    AddPlugin("/p/Über.so", "Über");
    RunDialog([this] {
        ASSERT_TRUE(Find("FindTextEdit").UI_GainKeyboardFocus(zelui::ui::kFocusByProgram));
        Type("dELay");
        EXPECT_THAT(ReadNames(), ElementsAre("Delay"));
        PressKey(Qt::Key_A, Qt::ControlModifier);
        Type("VST3");
        EXPECT_THAT(ReadNames(), ElementsAre("Echo"));
        PressKey(Qt::Key_A, Qt::ControlModifier);
        Type("ü");
        EXPECT_THAT(ReadNames(), IsEmpty());
        PressKey(Qt::Key_A, Qt::ControlModifier);
        Type("ÜBER");
        EXPECT_THAT(ReadNames(), ElementsAre("Über"));
        PressKey(Qt::Key_A, Qt::ControlModifier);
        PressKey(Qt::Key_Delete);
        EXPECT_EQ(ReadNames().size(), 4u);
    });
}

TEST_F(PluginManagerDialogTest, ATextThatEndsAsItWasFillsNothingAgain) {
    AddThree();
    RunDialog([this] {
        ASSERT_TRUE(Find("FindTextEdit").UI_GainKeyboardFocus(zelui::ui::kFocusByProgram));
        Type("e");
        const auto row = GetPlugins().GetRowAt(0);
        PressKey(Qt::Key_Return);
        EXPECT_EQ(GetPlugins().GetRowAt(0), row);
        EXPECT_EQ(GetPlugins().GetRowCount(), 2u);
    });
}

// All at once

TEST_F(PluginManagerDialogTest, EnableAllAndDisableAllAreForEveryPluginShownOrNot) {
    AddThree();
    RunDialog([this] {
        ASSERT_TRUE(Find("FindTextEdit").UI_GainKeyboardFocus(zelui::ui::kFocusByProgram));
        Type("delay");
        Click("DisableAllButton");
        EXPECT_FALSE(IsEnabled("/p/delay.so"));
        EXPECT_FALSE(IsEnabled("/q/echo.vst3"));
        EXPECT_THAT(ReadNames(), ElementsAre("Delay"));
        EXPECT_FALSE(GetEnabledBox(0)->IsChecked());
        Click("EnableAllButton");
        EXPECT_TRUE(IsEnabled("/p/chorus.so"));
        EXPECT_TRUE(GetEnabledBox(0)->IsChecked());
    });
}

TEST_F(PluginManagerDialogTest, WithAnEmptyCatalogueThereIsNothingToEnable) {
    Ban("/p/crashes.so");
    RunDialog([this] {
        EXPECT_TRUE(Find("EnableAllButton").UI_IsDisabled());
        EXPECT_TRUE(Find("DisableAllButton").UI_IsDisabled());
        EXPECT_THAT(ReadNames(), ElementsAre("crashes"));
    });
}

// Folders

TEST_F(PluginManagerDialogTest, AFolderIsAddedThroughTheChooser) {
    SaveCatalogue();
    RunDialog([this] {
        EXPECT_TRUE(Find("RemoveDirectoryButton").UI_IsDisabled());
        ChooseFolder(mFolder.GetPath());
        Click("AddDirectoryButton");
        EXPECT_THAT(GetFolders(), ElementsAre(FullName(mFolder.GetPath())));
        EXPECT_THAT(Read(GetFolderTree(), 0), ElementsAre(FullName(mFolder.GetPath())));
    });
    EXPECT_EQ(mBoxTitle, "Choose a Plug-In Folder:");
}

TEST_F(PluginManagerDialogTest, ACancelledChooserAddsNothing) {
    SaveCatalogue();
    RunDialog([this] {
        ChooseFolder("");
        Click("AddDirectoryButton");
        EXPECT_THAT(GetFolders(), IsEmpty());
    });
}

TEST_F(PluginManagerDialogTest, WithNothingSelectedNothingIsRemoved) {
    SetFolders({"/one", "/two"});
    SaveCatalogue();
    RunDialog([this] {
        Click("RemoveDirectoryButton");
        EXPECT_THAT(GetFolders(), ElementsAre("/one", "/two"));
    });
}

TEST_F(PluginManagerDialogTest, SelectedFoldersAreRemovedTogether) {
    SetFolders({"/one", "/two", "/three"});
    SaveCatalogue();
    RunDialog([this] {
        int changes = 0;
        const boost::signals::scoped_connection connection =
            PluginModuleInfoManager::GetInstance()
                .GetPluginTechnology(zelaudiofilterhost::kTechnologyVST)
                ->GetDirectoriesChangedSignal()
                .connect([&changes] { ++changes; });
        ASSERT_TRUE(GetFolderTree().UI_GainKeyboardFocus(zelui::ui::kFocusByProgram));
        PressKey(Qt::Key_Home);
        PressKey(Qt::Key_Down, Qt::ShiftModifier);
        EXPECT_FALSE(Find("RemoveDirectoryButton").UI_IsDisabled());
        Click("RemoveDirectoryButton");
        EXPECT_EQ(changes, 1);
        EXPECT_THAT(Read(GetFolderTree(), 0), ElementsAre("/three"));
        EXPECT_TRUE(Find("RemoveDirectoryButton").UI_IsDisabled());
    });
}

TEST_F(PluginManagerDialogTest, TheDefaultsAreAskedForAndNoChangesNothing) {
    SetFolders({"/mine"});
    SaveCatalogue();
    RunDialog([this] {
        AnswerBox("No");
        Click("DefaultDirectoriesButton");
        EXPECT_THAT(GetFolders(), ElementsAre("/mine"));
    });
    EXPECT_EQ(mBoxText,
              "Resetting the application's VST Plug-In folder settings to the default will delete any custom folders "
              "that have been specified. Do you want to continue?");
}

TEST_F(PluginManagerDialogTest, TheDefaultsAreTakenWithYes) {
    SetFolders({"/mine"});
    SaveCatalogue();
    RunDialog([this] {
        AnswerBox("Yes");
        Click("DefaultDirectoriesButton");
        EXPECT_THAT(GetFolders(), testing::Not(testing::Contains("/mine")));
        EXPECT_FALSE(GetFolders().empty());
        EXPECT_EQ(Read(GetFolderTree(), 0), GetFolders());
    });
}

TEST_F(PluginManagerDialogTest, WithoutFoldersTheDefaultsComeWithoutAQuestion) {
    SaveCatalogue();
    RunDialog([this] {
        Click("DefaultDirectoriesButton");
        EXPECT_EQ(FindBox(), nullptr);
        EXPECT_FALSE(GetFolders().empty());
    });
}

// OK and Cancel

TEST_F(PluginManagerDialogTest, CancelTakesEverythingBackAndTellsNobody) {
    AddThree();
    SetFolders({"/mine"});
    SaveCatalogue();
    RunDialog([this] {
        ClickNode(*GetEnabledBox(0));
        ChooseFolder(mFolder.GetPath());
        Click("AddDirectoryButton");
        ClickHeader(kNameColumn);
        Click("RescanExisting");
        Click("CancelButton");
    });
    EXPECT_TRUE(IsEnabled("/p/delay.so"));
    EXPECT_THAT(GetFolders(), ElementsAre("/mine"));
    EXPECT_EQ(mChangedSignals, 0);
    EXPECT_TRUE(mSettings.rescanExisting);
    EXPECT_EQ(mSettings.sortColumn, 2u);
    EXPECT_TRUE(mSettings.sortAscending);
    EXPECT_GE(mSettings.dialogRect.width, 400);
}

TEST_F(PluginManagerDialogTest, OKSavesOnceAndTellsOnce) {
    AddThree();
    SaveCatalogue();
    RunDialog([this] {
        Click("DisableAllButton");
        Click("OKButton");
    });
    EXPECT_EQ(mChangedSignals, 1);
    PluginModuleInfoManager::GetInstance().LoadConfiguration(
        zelcore::filesupport::File(zelcore::utility::UTF8to16(GetCataloguePath())));
    EXPECT_FALSE(IsEnabled("/p/delay.so"));
}

TEST_F(PluginManagerDialogTest, ACatalogueThatCannotBeWrittenReachesTheHostAndNothingInMemoryIsLost) {
    AddThree();
    SaveCatalogue();
    EXPECT_THROW(RunDialog([this] {
                     Click("DisableAllButton");
                     std::filesystem::remove(GetCataloguePath());
                     std::filesystem::create_directories(GetCataloguePath() + "/inside");
                     Click("OKButton");
                 }),
                 zelcore::filesupport::FileError);
    EXPECT_FALSE(IsEnabled("/p/delay.so"));
    EXPECT_GE(mSettings.dialogRect.width, 400);
    std::filesystem::remove_all(GetCataloguePath());
}

TEST_F(PluginManagerDialogTest, TheNodesOfTheThreeClassNamesAreTheDialogsOwn) {
    RunDialog([this] {
        const auto nameOf = [](const zelui::ui::UI_Node& node) { return std::string(typeid(node).name()); };
        EXPECT_NE(nameOf(GetPlugins()).find("PluginMultiColumnTree"), std::string::npos);
        EXPECT_EQ(nameOf(GetFolderTree()).find("PluginMultiColumnTree"), std::string::npos);
        EXPECT_EQ(typeid(Find("FindTextEdit")), typeid(zelui::controls::UI_SearchBox));
        const zelui::ui::UI_Node& folderBox = *Find("AddDirectoryButton").UI_GetParentNode()->UI_GetParentNode();
        const zelui::ui::UI_Node& pluginBox = *Find("FindTextEdit").UI_GetParentNode();
        EXPECT_NE(nameOf(folderBox).find("BoxView"), std::string::npos);
        EXPECT_NE(nameOf(pluginBox).find("BoxView"), std::string::npos);
    });
}

TEST_F(PluginManagerDialogTest, AfterOKEveryFieldHoldsTheDialogsLastState) {
    AddThree();
    SaveCatalogue();
    QRect frame;
    RunDialog([&] {
        Click("RescanExisting");
        ClickHeader(kPathColumn);
        ClickHeader(kPathColumn);
        GetWindow().setGeometry(30, 40, 800, 500);
        frame = GetWindow().frameGeometry();
        Click("OKButton");
    });
    EXPECT_TRUE(mSettings.rescanExisting);
    EXPECT_EQ(mSettings.sortColumn, 5u);
    EXPECT_FALSE(mSettings.sortAscending);
    EXPECT_GE(frame.width(), 800);
    EXPECT_EQ(mSettings.dialogRect, (zelcore::geom::Rect{frame.x(), frame.y(), frame.width(), frame.height()}));
}

TEST_F(PluginManagerDialogTest, ARecordIsAllZeroAndIsCopiedFieldByField) {
    const zelaudiofilterhostui::AudioPluginManagerSettings none;
    EXPECT_FALSE(none.rescanExisting);
    EXPECT_EQ(none.sortColumn, 0u);
    EXPECT_FALSE(none.sortAscending);
    EXPECT_EQ(none.dialogRect, zelcore::geom::Rect());
    mSettings.rescanExisting = true;
    mSettings.sortColumn = 3;
    mSettings.sortAscending = true;
    mSettings.dialogRect = {1, -2, 3, 4};
    zelaudiofilterhostui::AudioPluginManagerSettings copy;
    copy = mSettings;
    EXPECT_TRUE(copy.rescanExisting);
    EXPECT_EQ(copy.sortColumn, 3u);
    EXPECT_TRUE(copy.sortAscending);
    EXPECT_EQ(copy.dialogRect, mSettings.dialogRect);
}

TEST_F(PluginManagerDialogTest, ADefaultRecordOpensItAtTheArchivedSizeUnsortedAndUnchecked) {
    AddThree();
    RunDialog([this] {
        EXPECT_GE(GetWindow().width(), 737);
        EXPECT_EQ(GetWindow().height(), 470);
        EXPECT_FALSE(Find<UI_Checkbox>("RescanExisting").IsChecked());
        EXPECT_EQ(GetPlugins().GetHeaderRow()->GetSortColumn(), 0u);
        EXPECT_THAT(ReadNames(), ElementsAre("Delay", "Chorus", "Echo"));
    });
    EXPECT_EQ(mSettings.sortColumn, 0u);
    EXPECT_FALSE(mSettings.rescanExisting);
}

TEST_F(PluginManagerDialogTest, AMissingCatalogueFileIsMadeWithTheDefaultFoldersFirst) {
    RunDialog([this] {
        EXPECT_TRUE(std::filesystem::exists(GetCataloguePath()));
        EXPECT_FALSE(GetFolders().empty());
    });
}

TEST_F(PluginManagerDialogTest, ReturnIsOKAndEscapeIsCancel) {
    AddThree();
    SaveCatalogue();
    RunDialog([this] {
        Click("DisableAllButton");
        ASSERT_TRUE(Find("RescanExisting").UI_GainKeyboardFocus(zelui::ui::kFocusByProgram));
        PressKey(Qt::Key_Return);
    });
    EXPECT_EQ(mChangedSignals, 1);
    RunDialog([this] {
        Click("EnableAllButton");
        PressKey(Qt::Key_Escape);
    });
    EXPECT_EQ(mChangedSignals, 1);
    EXPECT_FALSE(IsEnabled("/p/delay.so"));
}

// The window

TEST_F(PluginManagerDialogTest, TheRememberedPlaceIsTakenAndAnEmptyOneIsNot) {
    RunDialog([this] {
        EXPECT_EQ(GetWindow().windowTitle().toStdString(), "Audio Plug-In Manager");
        GetWindow().resize(900, 600);
        Click("CancelButton");
    });
    const zelcore::geom::Rect rect = mSettings.dialogRect;
    EXPECT_GE(rect.width, 900);
    RunDialog([this] { EXPECT_EQ(GetWindow().size(), QSize(900, 600)); });
    EXPECT_EQ(mSettings.dialogRect, rect);
    mSettings.dialogRect = {10, 10, 0, 500};
    RunDialog([this] { EXPECT_NE(GetWindow().height(), 500); });
}

TEST_F(PluginManagerDialogTest, ItCannotBeMadeSmallerThanFourHundred) {
    RunDialog([this] {
        GetWindow().resize(100, 100);
        EXPECT_EQ(GetWindow().size(), QSize(400, 400));
    });
}

TEST_F(PluginManagerDialogTest, TheSeparateProcessBoxIsHiddenCheckedAndMakesRoomForFinding) {
    RectF shownOptions;
    RectF shownFind;
    RectF box;
    SetKey("AudioPluginManager.ShowExternalCheckBox");
    RunDialog([&] {
        box = Find("SeparateProcess").UI_GetLocalRectF();
        shownOptions = Find("SeparateProcess").UI_GetParentNode()->UI_GetLocalRectF();
        shownFind = Find("FindTextEdit").UI_GetLocalRectF();
        EXPECT_TRUE(Find("SeparateProcess").UI_IsShown());
        EXPECT_TRUE(Find<UI_Checkbox>("SeparateProcess").IsChecked());
        Click("SeparateProcess");
        EXPECT_FALSE(Find<UI_Checkbox>("SeparateProcess").IsChecked());
    });
    RunDialog([&] { EXPECT_TRUE(Find<UI_Checkbox>("SeparateProcess").IsChecked()); });
    zelcore::debug::DebugDatabase::Instance().Reload();
    mSettings.dialogRect = {};
    RunDialog([&] {
        EXPECT_FALSE(Find("SeparateProcess").UI_IsShown());
        EXPECT_TRUE(Find<UI_Checkbox>("SeparateProcess").IsChecked());
        const RectF options = Find("SeparateProcess").UI_GetParentNode()->UI_GetLocalRectF();
        EXPECT_EQ(options.width, shownOptions.width - box.width);
        EXPECT_EQ(Find("FindStaticText").UI_GetLocalRectF().left, box.left);
        const RectF find = Find("FindTextEdit").UI_GetLocalRectF();
        EXPECT_EQ(find.width, shownFind.width + box.width);
        EXPECT_EQ(find.Right(), shownFind.Right());
    });
}

TEST_F(PluginManagerDialogTest, ANarrowDialogHidesTheFindControlsAndAWideOneShowsThemAgain) {
    RunDialog([this] {
        const QSize size = GetWindow().size();
        GetWindow().resize(size.width() + 60, size.height());
        EXPECT_TRUE(Find("FindStaticText").UI_IsShown());
        EXPECT_TRUE(Find("FindTextEdit").UI_IsShown());
        GetWindow().resize(450, size.height());
        EXPECT_FALSE(Find("FindStaticText").UI_IsShown());
        EXPECT_FALSE(Find("FindTextEdit").UI_IsShown());
        GetWindow().resize(size.width() + 60, size.height());
        EXPECT_TRUE(Find("FindStaticText").UI_IsShown());
        EXPECT_TRUE(Find("FindTextEdit").UI_IsShown());
    });
}

TEST_F(PluginManagerDialogTest, EveryControlHasAnAccessibleName) {
    AddThree();
    Ban("/p/crashes.so");
    RunDialog([this] {
        GetPlugins().SyncVisibility();
        for (QWidget* const widget : GetWindow().findChildren<QWidget*>()) {
            if (!widget->isVisible() || widget->focusPolicy() == Qt::NoFocus) continue;
            const zelui::ui::UI_Node* const node = zelui::qt::GetNode(widget);
            if (node == nullptr || zelui::qt::GetWidget(*node) != widget) continue;
            EXPECT_FALSE(GetSpokenName(*widget).isEmpty()) << widget->objectName().toStdString();
        }
    });
}

}  // namespace zeltests
