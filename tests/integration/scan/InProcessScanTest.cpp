#include <filesystem>

#include <gmock/gmock.h>
#include <QApplication>
#include <QMessageBox>
#include <QPushButton>
#include <QTest>
#include <zelaudiofilterhost/PluginModuleInfoManager.h>
#include <zelaudiofilterhostui/AudioPluginScan.h>
#include <zelcore/DebugDatabase.h>
#include <zelcore/FileError.h>
#include <zelcore/Utf.h>
#include <zelui/UI_ProgressDialog.h>

#include "ScanFixture.h"

namespace zeltests {

using testing::ElementsAre;
using testing::IsEmpty;
using zelaudiofilterhost::PluginLocator;
using zelaudiofilterhostui::AudioPluginScan;

class InProcessScanTest : public ScanFixture {
protected:
    InProcessScanTest() { zelcore::debug::DebugDatabase::Instance().Reload(); }
    ~InProcessScanTest() override { zelcore::debug::DebugDatabase::Instance().Reload(); }

    /// Five working plug-ins: copies of one, as files of their own.
    std::vector<PluginLocator> MakeFivePlugins() {
        std::vector<PluginLocator> locators;
        for (const char* name : {"one", "two", "three", "four", "five"}) {
            const std::string path = mFolder.Path(std::string(name) + ZEL_MODULE);
            std::filesystem::copy_file(TestPlugin("vst/good/zel_gain" ZEL_MODULE), path);
            locators.push_back(Vst(path));
        }
        return locators;
    }

    static QMessageBox* FindNote() {
        for (QWidget* widget : QApplication::topLevelWidgets())
            if (auto* const box = qobject_cast<QMessageBox*>(widget); box && box->isVisible()) return box;
        return nullptr;
    }

    void Scan(const std::vector<PluginLocator>& locators) {
        AudioPluginScan scan(nullptr);
        scan.ScanForPlugins(nullptr, locators, false);
    }

    ThrowAwayFolder mFolder;
};

TEST_F(InProcessScanTest, EmptyListSavesTheCatalogueTellsListenersOnceAndLeavesNothingOpen) {
    WriteFile(GetMarkerPath(), "2||/left/by/a/crash.so");
    Scan({});
    EXPECT_TRUE(Exists(GetCataloguePath()));
    EXPECT_EQ(1, mChangedSignals);
    EXPECT_FALSE(Exists(GetMarkerPath()));
    EXPECT_THAT(mShown, IsEmpty());
    EXPECT_FALSE(FindDialog());
}

TEST_F(InProcessScanTest, WorkingPluginsReachTheCatalogueAndItsFile) {
    const auto locators = MakeFivePlugins();
    Scan(locators);
    std::vector<std::string> expected;
    for (const auto& locator : locators) expected.push_back(ToBytes(locator.GetPath()));
    EXPECT_EQ(expected, GetCatalogued());
    EXPECT_EQ(expected, GetCataloguedInFile());
    EXPECT_EQ(1, mChangedSignals);
    EXPECT_FALSE(Exists(GetMarkerPath()));
    EXPECT_FALSE(FindDialog());
}

TEST_F(InProcessScanTest, ShowsEachPluginBeforeItIsLoadedWithItsPositionAndTheTotal) {
    const auto locators = MakeFivePlugins();
    Scan(locators);
    ASSERT_EQ(locators.size(), mShown.size());
    for (std::size_t i = 0; i < mShown.size(); ++i) {
        EXPECT_EQ(i + 1, mShown[i].current);
        EXPECT_EQ(locators.size(), mShown[i].total);
        EXPECT_EQ(ToBytes(locators[i].GetPath()), mShown[i].text);
    }
}

TEST_F(InProcessScanTest, MarkerHoldsThePluginAboutToBeLoadedAndNothingElse) {
    const auto locators = MakeFivePlugins();
    std::vector<std::string> markers;
    boost::signals::scoped_connection connection = zelui::dialogs::UI_ProgressDialog::GetProgressSignal().connect(
        [&](unsigned long, unsigned long, const zelcore::ustring&) { markers.push_back(ReadFile(GetMarkerPath())); });
    Scan(locators);
    std::vector<std::string> expected;
    for (const auto& locator : locators) expected.push_back(ToString(locator));
    EXPECT_EQ(expected, markers);
}

TEST_F(InProcessScanTest, WhatWasScannedBeforeIsOnDiskWhenTheNextPluginIsLoaded) {
    const auto locators = MakeFivePlugins();
    // The save happens behind the text and before the loading, so it is seen one plug-in later.
    std::vector<bool> firstWasSaved;
    boost::signals::scoped_connection connection = zelui::dialogs::UI_ProgressDialog::GetProgressSignal().connect(
        [&](unsigned long, unsigned long, const zelcore::ustring&) {
            const bool saved = Exists(GetCataloguePath());
            firstWasSaved.push_back(saved && ReadFile(GetCataloguePath()).find("one" ZEL_MODULE) != std::string::npos);
        });
    Scan(locators);
    EXPECT_THAT(firstWasSaved, ElementsAre(false, false, true, true, true));
}

TEST_F(InProcessScanTest, CancelAfterTheThirdOfFiveKeepsThreeAndDropsTheRest) {
    const auto locators = MakeFivePlugins();
    Scan(locators);
    ASSERT_EQ(5u, GetCatalogued().size());
    mChangedSignals = 0;
    boost::signals::scoped_connection connection = zelui::dialogs::UI_ProgressDialog::GetProgressSignal().connect(
        [](unsigned long current, unsigned long, const zelcore::ustring&) {
            if (current == 4) ClickCancel();
        });
    Scan(locators);
    EXPECT_FALSE(Exists(GetMarkerPath()));
    EXPECT_EQ(1, mChangedSignals);
    EXPECT_THAT(GetCataloguedInFile(), ElementsAre(mFolder.Path("one" ZEL_MODULE), mFolder.Path("two" ZEL_MODULE),
                                                   mFolder.Path("three" ZEL_MODULE)));
    EXPECT_FALSE(FindDialog());
}

TEST_F(InProcessScanTest, ScanAgainAfterACancelIsNotCancelledAnyMore) {
    const auto locators = MakeFivePlugins();
    AudioPluginScan scan(nullptr);
    {
        boost::signals::scoped_connection connection = zelui::dialogs::UI_ProgressDialog::GetProgressSignal().connect(
            [](unsigned long, unsigned long, const zelcore::ustring&) { ClickCancel(); });
        scan.ScanForPlugins(nullptr, locators, false);
        EXPECT_THAT(GetCatalogued(), IsEmpty());
    }
    scan.ScanForPlugins(nullptr, locators, false);
    EXPECT_EQ(5u, GetCatalogued().size());
}

TEST_F(InProcessScanTest, OnlyTheExactValueTrueShowsTheDebugNote) {
    const auto locators = MakeFivePlugins();
    int notes = 0;
    WhenTrue([] { return FindNote() != nullptr; },
             [&] {
                 ++notes;
                 FindNote()->accept();
             });
    for (const char* value : {"True", "1", "TRUE", " true", "yes", ""}) {
        zelcore::debug::DebugDatabase::Instance().SetEntry("DebugPluginLoading", value);
        Scan({locators[0]});
        EXPECT_EQ(0, notes) << value;
    }
    zelcore::debug::DebugDatabase::Instance().SetEntry("DebugPluginLoading", "true");
    Scan({locators[0]});
    EXPECT_EQ(1, notes);
}

TEST_F(InProcessScanTest, DebugNoteNamesThePathUnderTheTitleScanningAndHoldsTheScanUp) {
    const auto locators = MakeFivePlugins();
    zelcore::debug::DebugDatabase::Instance().SetEntry("DebugPluginLoading", "true");
    std::string title;
    std::string message;
    bool loadedMeanwhile = true;
    WhenTrue([] { return FindNote() != nullptr; },
             [&] {
                 title = FindNote()->windowTitle().toStdString();
                 message = FindNote()->text().toStdString();
                 loadedMeanwhile = !GetCatalogued().empty();
                 QTest::keyClick(FindNote(), Qt::Key_Return);
             });
    Scan({locators[0]});
    EXPECT_EQ("Scanning", title);
    EXPECT_EQ(ToBytes(locators[0].GetPath()), message);
    EXPECT_FALSE(loadedMeanwhile);
    EXPECT_EQ(1u, GetCatalogued().size());
}

TEST_F(InProcessScanTest, CatalogueThatCannotBeWrittenReachesTheHostAndBlamesNobody) {
    const auto locators = MakeFivePlugins();
    std::filesystem::create_directory(GetCataloguePath());
    EXPECT_THROW(Scan(locators), zelcore::filesupport::FileError);
    EXPECT_FALSE(Exists(GetMarkerPath()));
    EXPECT_FALSE(FindDialog());
    std::filesystem::remove(GetCataloguePath());
    Scan(locators);
    EXPECT_EQ(5u, GetCataloguedInFile().size());
}

TEST_F(InProcessScanTest, RescanLooksAtKnownPluginsAgainAndTheOtherScanDoesNot) {
    MakeFivePlugins();
    const auto technology = zelaudiofilterhost::PluginModuleInfoManager::GetInstance().GetPluginTechnology(
        zelaudiofilterhost::kTechnologyVST);
    technology->SetPluginDirectories({mFolder.GetDir().FullPath()});
    zelaudiofilterhost::PluginModuleInfoManager::GetInstance()
        .GetPluginTechnology(zelaudiofilterhost::kTechnologyVST3)
        ->SetPluginDirectories({});
    AudioPluginScan(nullptr).ScanForPlugins(nullptr, false, false);
    EXPECT_EQ(5u, mShown.size());
    AudioPluginScan(nullptr).ScanForPlugins(nullptr, false, false);
    EXPECT_EQ(5u, mShown.size());
    AudioPluginScan(nullptr).ScanForPlugins(nullptr, true, false);
    EXPECT_EQ(10u, mShown.size());
    EXPECT_EQ(5u, GetCatalogued().size());
}

TEST_F(InProcessScanTest, PluginsThatAreGoneLeaveTheCatalogueWithTheNextScan) {
    MakeFivePlugins();
    auto& catalogue = zelaudiofilterhost::PluginModuleInfoManager::GetInstance();
    catalogue.GetPluginTechnology(zelaudiofilterhost::kTechnologyVST)
        ->SetPluginDirectories({mFolder.GetDir().FullPath()});
    catalogue.GetPluginTechnology(zelaudiofilterhost::kTechnologyVST3)->SetPluginDirectories({});
    AudioPluginScan(nullptr).ScanForPlugins(nullptr, false, false);
    std::filesystem::remove(mFolder.Path("two" ZEL_MODULE));
    AudioPluginScan(nullptr).ScanForPlugins(nullptr, false, false);
    EXPECT_EQ(4u, GetCataloguedInFile().size());
}

TEST_F(InProcessScanTest, MarkerFileStandsInThePreferencesFolder) {
    EXPECT_EQ(GetMarkerPath(), ToBytes(AudioPluginScan::GetLastScannedPluginPath().FullPath()));
}

}  // namespace zeltests
