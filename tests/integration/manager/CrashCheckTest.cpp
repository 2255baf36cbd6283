#include <filesystem>

#include <gmock/gmock.h>
#include <QApplication>
#include <QLabel>
#include <QMessageBox>
#include <QTest>
#include <zelaudiofilterhost/BannedPluginManager.h>
#include <zelaudiofilterhost/PluginModuleInfoManager.h>
#include <zelcore/FileError.h>
#include <zelcore/Utf.h>

#include "ManagerStage.h"

namespace zeltests {

using testing::ElementsAre;
using testing::IsEmpty;
using zelaudiofilterhost::BannedPluginManager;
using zelaudiofilterhost::PluginModuleInfoManager;

namespace {

constexpr char kShippedRows[] =
    "\t<plugin filename=\"mda Combo.dll\"/>\n"
    "\t<plugin filename=\"JCM900.dll\" uniqueid=\"12345678\" version=\"1234\"/>\n"
    "\t<plugin filename=\"Xhipsynth_beta.dll\" uniqueid=\"2020108656\" version=\"2300\"/>\n"
    "\t<plugin filename=\"HouseEffect.vst\" uniqueid=\"3091950960\" version=\"2400\"/>\n"
    "\t<plugin filename=\"BeatCounter.vst\" uniqueid=\"1114915700\" version=\"2400\"/>\n"
    "\t<plugin filename=\"Redline Monitor.vst\" uniqueid=\"1752199968\" version=\"2400\"/>\n";

/// A start of the host, after a run that left what the test has put into the profile.
class CrashCheckTest : public ManagerStage {
protected:
    void Check() {
        WhenTrue([this] { return FindBox() != nullptr; },
                 [this] {
                     auto* const box = dynamic_cast<QMessageBox*>(FindBox());
                     mTitles.push_back(box->windowTitle().toStdString());
                     std::string text = box->text().toStdString();
                     // Places at which a long path may be broken.
                     const std::string breakable = "\xe2\x80\x8b";
                     for (std::size_t at = text.find(breakable); at != std::string::npos; at = text.find(breakable))
                         text.erase(at, breakable.size());
                     mMessages.push_back(text);
                     if (mWhileShown) mWhileShown();
                     QTest::keyClick(box, Qt::Key_Return);
                 });
        zelaudiofilterhostui::AudioPluginManager::GetInstance().CheckForCrashedPluginsAndNotifyUser(nullptr, nullptr);
    }
    void LeaveMarker(const std::string& bytes) { WriteFile(GetMarker(), bytes); }
    std::string GetMarker() const { return GetPath("ScannedPluginPath.txt"); }
    std::string GetPermanentBans() const {
        return GetPath(ToBytes(BannedPluginManager::GetInstance().GetPermanentBannedSettingsFileName()));
    }
    static std::vector<std::string> GetBanned() {
        std::vector<std::string> paths;
        BannedPluginManager& bans = BannedPluginManager::GetInstance();
        for (auto it = bans.BannedBegin(); it != bans.BannedEnd(); ++it) paths.push_back(ToBytes(it->GetPath()));
        return paths;
    }
    void ExpectDeletedWithoutABan() {
        EXPECT_FALSE(std::filesystem::exists(GetMarker()));
        EXPECT_THAT(GetBanned(), IsEmpty());
        EXPECT_THAT(mMessages, IsEmpty());
        EXPECT_FALSE(std::filesystem::exists(GetBansPath()));
    }

    std::function<void()> mWhileShown;
    std::vector<std::string> mTitles;
    std::vector<std::string> mMessages;
};

}  // namespace

TEST_F(CrashCheckTest, WithoutAMarkerTheListsAndTheCatalogueAreLoadedAndNobodyIsTold) {
    AddPlugin("/p/one.so", "One", false);
    SaveCatalogue();
    Ban("/p/banned.so");
    BannedPluginManager::GetInstance().SaveConfiguration(
        zelcore::filesupport::File(zelcore::utility::UTF8to16(GetBansPath())));
    PluginModuleInfoManager::GetInstance().RemovePluginLocators({Locate("/p/one.so")});
    BannedPluginManager::GetInstance().RemoveBannedPlugin(Locate("/p/banned.so"));
    Check();
    EXPECT_FALSE(IsEnabled("/p/one.so"));
    EXPECT_THAT(GetBanned(), ElementsAre("/p/banned.so"));
    EXPECT_THAT(mMessages, IsEmpty());
}

TEST_F(CrashCheckTest, WhatARunThatWasKilledWhileItSavedLeftBehindGoes) {
    // No system gives that number to a process.
    const std::string leftover = mPreferences.GetFolder().Path(".zel-2147483647-3.tmp");
    WriteFile(leftover, "<audioplugins");
    Check();
    EXPECT_FALSE(std::filesystem::exists(leftover));
}

TEST_F(CrashCheckTest, AMissingPermanentListIsWrittenWithTheShippedRowsAndLoaded) {
    Check();
    EXPECT_EQ(ReadFile(GetPermanentBans()), std::string("<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n") +
                                                "<pluginlist version=\"4.0.0\">\n" + kShippedRows + "</pluginlist>\n");
    EXPECT_TRUE(BannedPluginManager::GetInstance().IsBanned(Locate("/anywhere/mda Combo.dll")));
}

TEST_F(CrashCheckTest, ADamagedPermanentListIsReplaced) {
    WriteFile(GetPermanentBans(), "<pluginlist");
    Check();
    EXPECT_NE(ReadFile(GetPermanentBans()).find("mda Combo.dll"), std::string::npos);
}

TEST_F(CrashCheckTest, APermanentListOfTheUsersOwnIsKept) {
    const std::string own = "<pluginlist version=\"4.0.0\"><plugin filename=\"own.so\"/></pluginlist>";
    WriteFile(GetPermanentBans(), own);
    Check();
    EXPECT_EQ(ReadFile(GetPermanentBans()), own);
    EXPECT_TRUE(BannedPluginManager::GetInstance().IsBanned(Locate("/p/own.so")));
}

TEST_F(CrashCheckTest, TheNamedPluginIsBannedSavedAndTheUserToldByItsName) {
    LeaveMarker("2||/p/crashes.so");
    Check();
    EXPECT_THAT(GetBanned(), ElementsAre("/p/crashes.so"));
    EXPECT_NE(ReadFile(GetBansPath()).find("/p/crashes.so"), std::string::npos);
    EXPECT_FALSE(std::filesystem::exists(GetMarker()));
    EXPECT_THAT(mTitles, ElementsAre("Tessaly"));
    EXPECT_THAT(mMessages,
                ElementsAre("An error occurred when scanning the plug-in '/p/crashes.so' that caused Tessaly to shut "
                            "down. This plug-in has been disabled and will be omitted from future scans until it is "
                            "manually enabled in Tessaly's Audio Plug-In Manager dialog."));
}

TEST_F(CrashCheckTest, APluginsNameThatHoldsThePlaceholderIsNotExpandedAgain) {
    LeaveMarker("2||/p/@PLUGINNAME.so");
    Check();
    ASSERT_EQ(mMessages.size(), 1u);
    EXPECT_NE(mMessages[0].find("'/p/@PLUGINNAME.so'"), std::string::npos);
}

TEST_F(CrashCheckTest, TheCatalogueIsLoadedAfterTheBan) {
    AddPlugin("/p/one.so", "One");
    SaveCatalogue();
    PluginModuleInfoManager::GetInstance().RemovePluginLocators({Locate("/p/one.so")});
    LeaveMarker("2||/p/gone.so");
    bool wasThere = true;
    mWhileShown = [&] {
        wasThere = PluginModuleInfoManager::GetInstance().FindPluginInfo(Locate("/p/one.so")) != nullptr;
    };
    Check();
    EXPECT_FALSE(wasThere);
    EXPECT_TRUE(IsEnabled("/p/one.so"));
}

TEST_F(CrashCheckTest, AnEmptyMarkerIsDeletedWithoutABan) {
    LeaveMarker("");
    Check();
    ExpectDeletedWithoutABan();
}

TEST_F(CrashCheckTest, APluginThatIsGoneMeanwhileIsBannedAllTheSameAndToldByItsPath) {
    const std::string path = mFolder.Path("gone.so");
    ASSERT_FALSE(std::filesystem::exists(path));
    LeaveMarker("2||" + path);
    Check();
    EXPECT_THAT(GetBanned(), ElementsAre(path));
    ASSERT_EQ(mMessages.size(), 1u);
    EXPECT_NE(mMessages[0].find("'" + path + "'"), std::string::npos);
    EXPECT_FALSE(std::filesystem::exists(GetMarker()));
}

TEST_F(CrashCheckTest, AMarkerThatIsCutOffIsDeletedWithoutABan) {
    for (const char* const bytes : {"2", "2|", "2||", "9||/p/x.so"}) {
        LeaveMarker(bytes);
        Check();
        ExpectDeletedWithoutABan();
    }
}

TEST_F(CrashCheckTest, ABinaryMarkerIsDeletedWithoutABan) {
    std::string bytes;
    for (int i = 0; i < 4096; ++i) bytes.push_back(static_cast<char>(i * 37));
    LeaveMarker(bytes);
    Check();
    ExpectDeletedWithoutABan();
}

TEST_F(CrashCheckTest, AMarkerOfMegabytesIsDeletedWithoutBeingRead) {
    LeaveMarker("2||/" + std::string(8 << 20, 'x'));
    Check();
    ExpectDeletedWithoutABan();
}

TEST_F(CrashCheckTest, AMarkerThatCannotBeDeletedReachesTheHostAfterTheBan) {
    LeaveMarker("2||/p/crashes.so");
    // While the user reads the message a folder takes the marker's place, which nobody deletes like a file.
    mWhileShown = [this] {
        std::filesystem::remove(GetMarker());
        std::filesystem::create_directories(GetMarker() + "/inside");
    };
    EXPECT_THROW(Check(), zelcore::filesupport::FileError);
    EXPECT_THAT(GetBanned(), ElementsAre("/p/crashes.so"));
    EXPECT_NE(ReadFile(GetBansPath()).find("/p/crashes.so"), std::string::npos);
}

}  // namespace zeltests
