#include <filesystem>

#include <gmock/gmock.h>
#include <QApplication>
#include <QPushButton>
#include <QTest>
#include <zelaudiofilterhost/BannedPluginManager.h>
#include <zelaudiofilterhost/PluginModuleInfoManager.h>
#include <zelcore/DebugDatabase.h>
#include <zelcore/Dir.h>
#include <zelcore/Utf.h>
#include <zelui/UI_ProgressDialog.h>

#include "ManagerStage.h"

namespace zeltests {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::UnorderedElementsAre;
using zelaudiofilterhost::BannedPluginManager;
using zelaudiofilterhost::PluginModuleInfoManager;
using zelcore::filesupport::Dir;

namespace {

/// The dialog over a folder of real test plug-ins, with the real scanner program.
class RescanTest : public ManagerStage {
protected:
    RescanTest() {
        Dir::SetAppDir(Dir(zelcore::utility::UTF8to16(ZEL_BIN_DIR)));
        SetFolders({FullName(mPlugins.GetPath())});
        SaveCatalogue();
    }
    ~RescanTest() override { Dir::SetAppDir(Dir()); }

    std::string Put(const std::string& testPlugin, const std::string& name) {
        std::filesystem::copy_file(TestPlugin(testPlugin), mPlugins.Path(name),
                                   std::filesystem::copy_options::overwrite_existing);
        return FullName(mPlugins.Path(name));
    }
    void AddOneOfEachChoice() {
        mDisabled = Put("vst/good/zel_gain" ZEL_MODULE, "disabled" ZEL_MODULE);
        mEnabled = Put("vst/good/zel_gain" ZEL_MODULE, "enabled" ZEL_MODULE);
    }
    /// Takes the check mark of the first plug-in away.
    void ScanAndChoose() {
        Click("UpdateButton");
        ASSERT_THAT(ReadPaths(), ElementsAre(mDisabled, mEnabled));
        ClickNode(*GetEnabledBox(0));
        ASSERT_FALSE(IsEnabled(mDisabled));
    }
    void ExpectChoicesKept() {
        ASSERT_THAT(ReadPaths(), ElementsAre(mDisabled, mEnabled));
        EXPECT_FALSE(IsEnabled(mDisabled));
        EXPECT_FALSE(GetEnabledBox(0)->IsChecked());
        EXPECT_TRUE(IsEnabled(mEnabled));
        EXPECT_TRUE(GetEnabledBox(1)->IsChecked());
    }
    /// Presses the cancel button of the progress dialog as soon as it is there.
    void CancelScan() {
        WhenTrue(
            [this] { return FindBox() != nullptr && FindBox()->findChild<QPushButton*>("CancelButton") != nullptr; },
            [this] { QTest::mouseClick(FindBox()->findChild<QPushButton*>("CancelButton"), Qt::LeftButton); });
    }
    std::vector<std::string> ReadPaths() const { return Read(GetPlugins(), 4); }
    std::vector<std::string> ReadStatus() const { return Read(GetPlugins(), 3); }

    ThrowAwayFolder mPlugins;
    std::string mDisabled;
    std::string mEnabled;
};

}  // namespace

TEST_F(RescanTest, TheScannerProcessFindsNewPluginsAndTheListShowsThem) {
    const std::string gain = Put("vst/good/zel_gain" ZEL_MODULE, "gain" ZEL_MODULE);
    RunDialog([&] {
        EXPECT_THAT(ReadPaths(), IsEmpty());
        Click("UpdateButton");
        EXPECT_THAT(ReadPaths(), ElementsAre(gain));
        EXPECT_FALSE(Find("EnableAllButton").UI_IsDisabled());
    });
}

TEST_F(RescanTest, APluginThatCrashesTheScannerIsListedAsNotWorkingAndTheOthersAreThere) {
    const std::string gain = Put("vst/good/zel_gain" ZEL_MODULE, "gain" ZEL_MODULE);
    const std::string crash = Put("vst/bad/crash_when_described" ZEL_MODULE, "crash" ZEL_MODULE);
    RunDialog([&] {
        Click("UpdateButton");
        EXPECT_THAT(ReadPaths(), ElementsAre(gain, crash));
        EXPECT_EQ(ReadStatus()[0], "Working");
        // With the reason, for who asks for it.
        EXPECT_EQ(ReadStatus()[1].rfind("Not Working: ", 0), 0u) << ReadStatus()[1];
    });
}

TEST_F(RescanTest, InThisProcessWhereTheDeveloperKeyAllowsIt) {
    zelcore::debug::DebugDatabase::Instance().SetEntry("AudioPluginManager.ShowExternalCheckBox", "true");
    const std::string gain = Put("vst/good/zel_gain" ZEL_MODULE, "gain" ZEL_MODULE);
    const ThrowAwayFolder without;
    Dir::SetAppDir(without.GetDir());
    RunDialog([&] {
        Click("SeparateProcess");
        Click("UpdateButton");
        EXPECT_THAT(ReadPaths(), ElementsAre(gain));
    });
}

TEST_F(RescanTest, AChoiceSurvivesARescanOfEverything) {
    AddOneOfEachChoice();
    RunDialog([this] {
        ScanAndChoose();
        Click("RescanExisting");
        Click("UpdateButton");
        ExpectChoicesKept();
    });
}

TEST_F(RescanTest, AChoiceSurvivesAnUpdateOfThePluginsFile) {
    AddOneOfEachChoice();
    RunDialog([this] {
        ScanAndChoose();
        Put("vst/good/zel_many" ZEL_MODULE, "disabled" ZEL_MODULE);
        Put("vst/good/zel_many" ZEL_MODULE, "enabled" ZEL_MODULE);
        Click("UpdateButton");
        ExpectChoicesKept();
    });
}

TEST_F(RescanTest, AChoiceSurvivesAMoveOfTheFolderList) {
    AddOneOfEachChoice();
    RunDialog([this] {
        ScanAndChoose();
        SetFolders({FullName("/nowhere"), FullName(mPlugins.GetPath())});
        Click("UpdateButton");
        ExpectChoicesKept();
    });
}

TEST_F(RescanTest, ACancelledScanKeepsWhatWasFoundAndSetsAsideWhatItWasStoppedIn) {
    const std::string gain = Put("vst/good/zel_gain" ZEL_MODULE, "a" ZEL_MODULE);
    const std::string hangs = Put("vst/bad/hang_when_opened" ZEL_MODULE, "hangs" ZEL_MODULE);
    std::string shown;
    const boost::signals::scoped_connection watch(zelui::dialogs::UI_ProgressDialog::GetProgressSignal().connect(
        [&](unsigned long, unsigned long, const zelcore::ustring& text) { shown = ToBytes(text); }));
    RunDialog([&] {
        WhenTrue([&] { return shown.find("hangs") != std::string::npos; }, [this] { CancelScan(); });
        Click("UpdateButton");
        EXPECT_THAT(ReadPaths(), ElementsAre(gain, hangs));
        EXPECT_THAT(ReadStatus(),
                    ElementsAre("Working", "Not Working: the scan was stopped while this plug-in was scanned"));
    });
}

TEST_F(RescanTest, ReloadBringsABannedPluginBackThatWorksByNow) {
    const std::string gain = Put("vst/good/zel_gain" ZEL_MODULE, "gain" ZEL_MODULE);
    Ban(gain);
    RunDialog([&] {
        EXPECT_EQ(ReadStatus()[0], "Not Working");
        ClickNode(*GetReloadButton(0));
        EXPECT_THAT(ReadStatus(), ElementsAre("Working"));
        EXPECT_TRUE(GetEnabledBox(0)->IsChecked());
        EXPECT_EQ(GetReloadButton(0), nullptr);
    });
    EXPECT_EQ(ReadFile(GetBansPath()).find(gain), std::string::npos);
}

TEST_F(RescanTest, TheSpaceBarReloadsABannedPlugin) {
    const std::string gain = Put("vst/good/zel_gain" ZEL_MODULE, "gain" ZEL_MODULE);
    Ban(gain);
    RunDialog([&] {
        ASSERT_TRUE(GetPlugins().UI_GainKeyboardFocus(zelui::ui::kFocusByProgram));
        PressKey(Qt::Key_Home);
        PressKey(Qt::Key_Space);
        EXPECT_THAT(ReadStatus(), ElementsAre("Working"));
    });
}

TEST_F(RescanTest, ABanListThatCannotBeWrittenIsToldAndTheListIsAsTheCatalogueIs) {
    const std::string gain = Put("vst/good/zel_gain" ZEL_MODULE, "gain" ZEL_MODULE);
    Ban(gain);
    std::filesystem::create_directories(GetBansPath() + "/inside");
    bool wasTold = false;
    RunDialog([&] {
        WhenTrue([this] { return FindBox() != nullptr; },
                 [&] {
                     wasTold = true;
                     QTest::keyClick(FindBox(), Qt::Key_Return);
                 });
        ClickNode(*GetReloadButton(0));
        EXPECT_THAT(ReadPaths(), IsEmpty());
    });
    EXPECT_TRUE(wasTold);
    std::filesystem::remove_all(GetBansPath());
}

TEST_F(RescanTest, ReloadOfOneThatStillCrashesBansItAgain) {
    const std::string crash = Put("vst/bad/crash_when_described" ZEL_MODULE, "crash" ZEL_MODULE);
    Ban(crash);
    RunDialog([&] {
        ClickNode(*GetReloadButton(0));
        EXPECT_THAT(ReadPaths(), ElementsAre(crash));
        EXPECT_NE(GetReloadButton(0), nullptr);
    });
}

TEST_F(RescanTest, ReloadOfOneWhoseFileIsGoneTakesItOutOfTheCatalogueWithoutAScan) {
    const std::string gain = Put("vst/good/zel_gain" ZEL_MODULE, "gain" ZEL_MODULE);
    RunDialog([&] {
        Click("UpdateButton");
        Click("OKButton");
    });
    std::filesystem::remove(gain);
    zelcore::debug::DebugDatabase::Instance().SetEntry("AlwaysShowPlugInRescanButton", "true");
    int progress = 0;
    const boost::signals::scoped_connection connection = zelui::dialogs::UI_ProgressDialog::GetProgressSignal().connect(
        [&progress](unsigned long, unsigned long, const zelcore::ustring&) { ++progress; });
    RunDialog([&] {
        ASSERT_NE(GetReloadButton(0), nullptr);
        ClickNode(*GetReloadButton(0));
        EXPECT_THAT(ReadPaths(), IsEmpty());
        Click("CancelButton");
    });
    EXPECT_EQ(progress, 0);
    // Saved at once: not even Cancel brings back what is gone.
    EXPECT_EQ(ReadFile(GetCataloguePath()).find("<plugin path=\"" + gain), std::string::npos);
    EXPECT_EQ(PluginModuleInfoManager::GetInstance().FindPluginInfo(Locate(gain)), nullptr);
}

}  // namespace zeltests
