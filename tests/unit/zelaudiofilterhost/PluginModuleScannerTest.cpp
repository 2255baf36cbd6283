#include <filesystem>

#include <zelaudiofilterhost/BannedPluginManager.h>
#include <zelaudiofilterhost/PluginModuleScanner.h>

#include "CatalogueTestSupport.h"

namespace {

using namespace zelaudiofilterhost;
using zeltests::Narrow;
using zeltests::U;
using zeltests::Vst;
using zeltests::WriteFile;

constexpr std::uint32_t kGainId = 0x5A476169;

class PluginModuleScannerTest : public zeltests::CatalogueTest {
protected:
    PluginModuleScannerTest()
        : mGain(Copy("vst/good/zel_gain" ZEL_MODULE)),
          mShell(Copy("vst/good/zel_shell" ZEL_MODULE)),
          mText(Vst(mFolder.Path("text" ZEL_MODULE))) {
        WriteFile(mFolder.Path("text" ZEL_MODULE), "not a plug-in");
        SetPermanentBans("");
    }
    ~PluginModuleScannerTest() override { SetPermanentBans(""); }

    PluginLocator Copy(const std::string& name) const {
        const std::filesystem::path source = std::filesystem::path(ZEL_TESTPLUGINS_DIR) / name;
        const std::string target = mFolder.Path(source.filename().string());
        std::filesystem::copy(source, target);
        return Vst(target);
    }
    void SetPermanentBans(const std::string& elements) const {
        WriteFile(mFolder.Path("bans.xml"), "<pluginlist version=\"4.0.0\">" + elements + "</pluginlist>");
        ASSERT_TRUE(BannedPluginManager::GetInstance().LoadStaticConfiguration(
            zelcore::filesupport::File(mFolder.UPath("bans.xml"))));
    }
    /// Scans to the end and returns what was announced before each step.
    static std::vector<std::string> Scan(const std::vector<PluginLocator>& locators, bool includeBanned = false) {
        const boost::intrusive_ptr<PluginModuleScanner> scanner(new PluginModuleScanner(locators, includeBanned));
        std::vector<std::string> steps;
        PluginLocator locator;
        ustring text;
        int current = 0, total = 0;
        scanner->BeginScan();
        while (scanner->GetCurrentProgressInfo(locator, text, current, total)) {
            const std::string path = Narrow(locator.GetPath());
            steps.push_back(std::to_string(current) + "/" + std::to_string(total) + Narrow(text) + " " +
                            path.substr(path.rfind('/') + 1));
            if (!scanner->ContinueScan()) break;
        }
        scanner->EndScan();
        return steps;
    }
    std::string ReasonOf(const PluginLocator& locator) const {
        for (auto failure = Catalogue().FailureBegin(); failure != Catalogue().FailureEnd(); ++failure) {
            if (failure->locator == locator) return Narrow(failure->reason);
        }
        return "not failed";
    }

    PluginLocator mGain, mShell, mText;
};

typedef std::vector<std::string> Steps;

TEST_F(PluginModuleScannerTest, EachPluginIsAnnouncedThenTakenUpOrNotedWithTheReason) {
    EXPECT_EQ(Scan({mGain, mText, mShell}),
              (Steps{"1/3 zel_gain" ZEL_MODULE, "2/3 text" ZEL_MODULE, "3/3 zel_shell" ZEL_MODULE}));
    ASSERT_TRUE(Catalogue().FindPluginInfo(mGain));
    EXPECT_EQ(Narrow(Catalogue().FindPluginInfo(mGain)->GetName()), "Zel Gain");
    EXPECT_EQ(Catalogue().FindPluginInfo(mGain)->GetFingerprint(), PluginFingerprint::Take(mGain.GetPath()));
    ASSERT_TRUE(Catalogue().FindPluginInfo(mShell));
    EXPECT_EQ(Catalogue().FindPluginInfo(mShell)->GetComponents().size(), 3u);
    EXPECT_FALSE(Catalogue().FindPluginInfo(mText));
    EXPECT_NE(ReasonOf(mText), "not failed");
    EXPECT_NE(ReasonOf(mText), "");
}

TEST_F(PluginModuleScannerTest, WhatWasScannedIsNotNewUntilItChanges) {
    Scan({mGain, mText});
    EXPECT_EQ(Catalogue().CollectPotentialPluginsIn({mFolder.UPath("")}, true), std::vector<PluginLocator>{mShell});
    WriteFile(mFolder.Path("text" ZEL_MODULE), "another text that is no plug-in");
    EXPECT_EQ(Catalogue().CollectPotentialPluginsIn({mFolder.UPath("")}, true),
              (std::vector<PluginLocator>{mText, mShell}));
}

TEST_F(PluginModuleScannerTest, PluginThatGotNoMemoryIsTriedAgainByTheNextScan) {
    const PluginLocator poor = Copy("vst/bad/no_memory_when_opened" ZEL_MODULE);
    Scan({mGain, mShell, mText, poor});
    EXPECT_EQ(ReasonOf(poor), "got no memory when it was opened");
    EXPECT_EQ(Catalogue().CollectPotentialPluginsIn({mFolder.UPath("")}, true), std::vector<PluginLocator>{poor});
}

TEST_F(PluginModuleScannerTest, NothingIsAnnouncedBeforeTheBeginningAfterTheEndOrForAnEmptyList) {
    const boost::intrusive_ptr<PluginModuleScanner> scanner(new PluginModuleScanner({mText}, false));
    PluginLocator locator = mGain;
    ustring text = U("text");
    int current = 7, total = 8;
    EXPECT_FALSE(scanner->GetCurrentProgressInfo(locator, text, current, total));
    EXPECT_FALSE(scanner->ContinueScan());
    scanner->BeginScan();
    scanner->EndScan();
    EXPECT_FALSE(scanner->GetCurrentProgressInfo(locator, text, current, total));
    EXPECT_FALSE(scanner->ContinueScan());
    EXPECT_EQ(locator, mGain);
    EXPECT_EQ(Narrow(text), "text");
    EXPECT_EQ(current, 7);
    EXPECT_EQ(total, 8);
    EXPECT_EQ(ReasonOf(mText), "not failed");
    EXPECT_EQ(Scan({}), Steps());
}

TEST_F(PluginModuleScannerTest, BannedPluginsAreLeftOutAndNotCounted) {
    BannedPluginManager::GetInstance().AddBannedPlugin(mGain);
    EXPECT_EQ(Scan({mGain, mText}), Steps{"1/1 text" ZEL_MODULE});
    EXPECT_FALSE(Catalogue().FindPluginInfo(mGain));
    EXPECT_EQ(Scan({mGain, mText}, true), (Steps{"1/2 zel_gain" ZEL_MODULE, "2/2 text" ZEL_MODULE}));
    EXPECT_TRUE(Catalogue().FindPluginInfo(mGain));
}

TEST_F(PluginModuleScannerTest, ComponentsOnThePermanentListAreDropped) {
    std::string name = "zel_shell" ZEL_MODULE;
    std::transform(name.begin(), name.end(), name.begin(), [](char c) { return static_cast<char>(std::toupper(c)); });
    SetPermanentBans("<plugin filename=\"" + name + "\" uniqueid=\"1515415602\"/>");
    Scan({mShell});
    ASSERT_TRUE(Catalogue().FindPluginInfo(mShell));
    EXPECT_EQ(Catalogue().FindPluginInfo(mShell)->GetComponents().size(), 2u);
}

TEST_F(PluginModuleScannerTest, APluginWithoutAnyComponentLeftIsUnsupported) {
    SetPermanentBans("<plugin filename=\"zel_gain" ZEL_MODULE "\" uniqueid=\"" + std::to_string(kGainId) + "\"/>");
    Scan({mGain});
    EXPECT_FALSE(Catalogue().FindPluginInfo(mGain));
    EXPECT_EQ(ReasonOf(mGain), "on the list of unsupported plug-ins");
}

TEST_F(PluginModuleScannerTest, WhateverAPluginThrowsIsItsFailureAndTheScanGoesOn) {
    const PluginLocator number = Copy("vst/bad/throws_a_number" ZEL_MODULE),
                        error = Copy("vst/bad/throws_when_opened" ZEL_MODULE);
    Scan({number, error, mGain});
    EXPECT_NE(ReasonOf(number), "not failed");
    EXPECT_NE(ReasonOf(error).find("no licence"), std::string::npos) << ReasonOf(error);
    EXPECT_TRUE(Catalogue().FindPluginInfo(mGain));
}

TEST_F(PluginModuleScannerTest, AUsersChoiceSurvivesARescan) {
    Scan({mGain});
    Catalogue().FindPluginInfo(mGain)->SetEnabled(false);
    Catalogue().RemovePluginLocators({mGain});
    Scan({mGain});
    EXPECT_FALSE(Catalogue().FindPluginInfo(mGain)->IsEnabled());
}

TEST_F(PluginModuleScannerTest, AFileThatIsGoneIsAFailure) {
    std::filesystem::remove(mFolder.Path("zel_gain" ZEL_MODULE));
    Scan({mGain});
    EXPECT_NE(ReasonOf(mGain), "not failed");
}

}  // namespace
