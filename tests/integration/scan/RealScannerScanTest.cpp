#include <algorithm>
#include <filesystem>
#include <set>
#include <string>

#include <gmock/gmock.h>
#include <zelaudiofilterhost/BannedPluginManager.h>
#include <zelaudiofilterhost/PluginModuleInfoManager.h>
#include <zelaudiofilterhostui/AudioPluginScan.h>
#include <zelcore/Utf.h>

#include "DeadlyPlugins.h"
#include "ProcessList.h"
#include "ScanFixture.h"
#include "support/Environment.h"

namespace zeltests {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::UnorderedElementsAreArray;
using zelaudiofilterhost::PluginLocator;
using zelaudiofilterhostui::AudioPluginScan;

/// The real scanner process with the test plug-ins, good and bad.
class RealScannerScanTest : public ScanFixture {
protected:
    RealScannerScanTest() {
        SetVariable("ZEL_SCANNER_TIMEOUT_SECONDS", "2");
        SetVariable("ZEL_SCANNER_MEMORY_MB", "300");
        UseRealScanner();
    }
    ~RealScannerScanTest() override {
        SetVariable("ZEL_SCANNER_TIMEOUT_SECONDS", nullptr);
        SetVariable("ZEL_SCANNER_MEMORY_MB", nullptr);
    }

    /// Good and bad ones alternating, so that every bad one has innocent neighbours.
    static std::vector<PluginLocator> MixGoodAndBad() {
        std::vector<PluginLocator> mixed;
        const std::vector<PluginLocator> good = GetAll("good");
        const std::vector<PluginLocator> bad = GetAll("bad");
        for (std::size_t i = 0; i < std::max(good.size(), bad.size()); ++i) {
            if (i < bad.size()) mixed.push_back(bad[i]);
            mixed.push_back(good[i % good.size()]);
        }
        std::vector<PluginLocator> once;
        for (const PluginLocator& locator : mixed)
            if (std::find(once.begin(), once.end(), locator) == once.end()) once.push_back(locator);
        return once;
    }

    static std::vector<PluginLocator> GetAll(const std::string& kind) {
        std::vector<PluginLocator> locators;
        for (const auto& entry : std::filesystem::directory_iterator(TestPlugin("vst/" + kind)))
            locators.push_back(Vst(entry.path().generic_string()));
        for (const auto& entry : std::filesystem::directory_iterator(TestPlugin("vst3/" + kind)))
            locators.push_back(Vst3(entry.path().generic_string()));
        std::sort(locators.begin(), locators.end());
        return locators;
    }

    static std::vector<std::string> GetPaths(const std::vector<PluginLocator>& locators) {
        std::vector<std::string> paths;
        for (const PluginLocator& locator : locators) paths.push_back(ToBytes(locator.GetPath()));
        return paths;
    }

    void Scan(const std::vector<PluginLocator>& locators) {
        AudioPluginScan(nullptr).ScanForPlugins(nullptr, locators, true);
    }
};

TEST_F(RealScannerScanTest, EveryGoodOneIsCataloguedEveryDeadlyOneBannedAndNobodyElse) {
    const std::vector<PluginLocator> mixed = MixGoodAndBad();
    const std::size_t children = ProcessList::CountScanners();
    Scan(mixed);

    std::vector<std::string> deadly;
    for (const PluginLocator& locator : GetAll("bad"))
        if (IsDeadly(std::filesystem::path(ToBytes(locator.GetPath())).stem().string()))
            deadly.push_back(ToBytes(locator.GetPath()));
    ASSERT_GE(deadly.size(), 10u);
    EXPECT_THAT(GetBanned(), UnorderedElementsAreArray(deadly));

    const std::vector<std::string> catalogued = GetCatalogued();
    for (const std::string& path : GetPaths(GetAll("good")))
        EXPECT_EQ(1, std::count(catalogued.begin(), catalogued.end(), path)) << path;
    // Whatever is neither working nor banned is known as failed, with a reason: nothing is lost.
    auto& catalogue = zelaudiofilterhost::PluginModuleInfoManager::GetInstance();
    std::size_t failed = 0;
    for (auto it = catalogue.FailureBegin(); it != catalogue.FailureEnd(); ++it, ++failed)
        EXPECT_FALSE(it->reason.empty()) << ToString(it->locator);
    EXPECT_EQ(mixed.size(), catalogued.size() + failed + deadly.size());

    for (std::size_t i = 1; i < mShown.size(); ++i) EXPECT_GE(mShown[i].current, mShown[i - 1].current);
    for (const Shown& shown : mShown) EXPECT_EQ(mixed.size(), shown.total);
    EXPECT_EQ(mixed.size(), mShown.size());
    EXPECT_EQ(children, ProcessList::CountScanners());
}

TEST_F(RealScannerScanTest, ReasonsOfBansAreInPlainWords) {
    Scan({Vst(TestPlugin("vst/bad/crash_when_described" ZEL_MODULE)),
          Vst(TestPlugin("vst/bad/hang_when_opened" ZEL_MODULE)),
          Vst(TestPlugin("vst/bad/exit_when_opened" ZEL_MODULE)),
          Vst(TestPlugin("vst/bad/allocate_when_opened" ZEL_MODULE))});
    auto& bans = zelaudiofilterhost::BannedPluginManager::GetInstance();
    const auto reason = [&](const char* name) { return ToBytes(bans.GetReason(Vst(TestPlugin(name)))); };
    // A sanitizer ends the process by itself instead of leaving the signal to the system.
    EXPECT_THAT(reason("vst/bad/crash_when_described" ZEL_MODULE),
                testing::AnyOf(std::string("crashed while it was scanned: ") + ProcessList::GetCrashName(),
                               testing::HasSubstr("exit code")));
    EXPECT_EQ("did not answer within the time limit while it was scanned",
              reason("vst/bad/hang_when_opened" ZEL_MODULE));
    EXPECT_EQ("ended the scanner process (exit code 0)", reason("vst/bad/exit_when_opened" ZEL_MODULE));
    EXPECT_EQ("took more memory than the limit while it was scanned",
              reason("vst/bad/allocate_when_opened" ZEL_MODULE));
}

TEST_F(RealScannerScanTest, BothWaysOfScanningGiveTheSameCatalogue) {
    std::vector<PluginLocator> harmless = GetAll("good");
    for (const PluginLocator& locator : GetAll("bad"))
        if (!IsDeadly(ToBytes(locator.GetPath()))) harmless.push_back(locator);
    for (const char* name : {"text" ZEL_MODULE, "empty" ZEL_MODULE, "cut_off" ZEL_MODULE, "other_processor" ZEL_MODULE})
        harmless.push_back(Vst(TestPlugin(std::string("notplugins/") + name)));
    auto& catalogue = zelaudiofilterhost::PluginModuleInfoManager::GetInstance();
    Scan(harmless);
    const std::string separate = catalogue.GetConfigurationText(harmless);
    AudioPluginScan(nullptr).ScanForPlugins(nullptr, harmless, false);
    EXPECT_EQ(separate, catalogue.GetConfigurationText(harmless));
    EXPECT_GE(GetCatalogued().size(), GetAll("good").size());
}

TEST_F(RealScannerScanTest, ShellsAndModulesWithSeveralClassesYieldAllTheirComponents) {
    const PluginLocator shell = Vst(TestPlugin("vst/good/zel_shell" ZEL_MODULE));
    const PluginLocator several = Vst3(TestPlugin("vst3/good/ZelSeveral3.vst3"));
    Scan({shell, several});
    auto& catalogue = zelaudiofilterhost::PluginModuleInfoManager::GetInstance();
    for (const PluginLocator& locator : {shell, several}) {
        const auto info = catalogue.FindPluginInfo(locator);
        ASSERT_TRUE(info);
        EXPECT_EQ(3u, info->GetComponents().size());
        std::set<zelcore::ustring> ids;
        for (const auto& component : info->GetComponents()) {
            ids.insert(component.componentId);
            EXPECT_FALSE(component.subcomponent.empty());
        }
        EXPECT_EQ(3u, ids.size());
    }
}

TEST_F(RealScannerScanTest, EmptyListEndsAtOnce) {
    Scan({});
    EXPECT_THAT(mShown, IsEmpty());
    EXPECT_FALSE(FindDialog());
}

TEST_F(RealScannerScanTest, BannedPluginsAreSteppedOver) {
    zelaudiofilterhost::BannedPluginManager& bans = zelaudiofilterhost::BannedPluginManager::GetInstance();
    const PluginLocator banned = Vst(TestPlugin("vst/good/zel_gain" ZEL_MODULE));
    bans.AddBannedPlugin(banned);
    bans.SaveConfiguration(zelcore::filesupport::File(zelcore::utility::UTF8to16(GetBansPath())));
    Scan({banned, Vst(TestPlugin("vst/good/zel_synth" ZEL_MODULE))});
    EXPECT_THAT(GetCatalogued(), ElementsAre(TestPlugin("vst/good/zel_synth" ZEL_MODULE)));
}

TEST_F(RealScannerScanTest, CancelOfAHangingPluginEndsTheScannerAtOnce) {
    SetVariable("ZEL_SCANNER_TIMEOUT_SECONDS", "600");
    const std::size_t before = ProcessList::CountScanners();
    WhenTrue([this] { return mShown.size() == 2; }, [] { ClickCancel(); });
    Scan({Vst(TestPlugin("vst/good/zel_gain" ZEL_MODULE)), Vst(TestPlugin("vst/bad/hang_when_opened" ZEL_MODULE)),
          Vst(TestPlugin("vst/good/zel_synth" ZEL_MODULE))});
    EXPECT_THAT(GetCataloguedInFile(), ElementsAre(TestPlugin("vst/good/zel_gain" ZEL_MODULE)));
    EXPECT_EQ(before, ProcessList::CountScanners());
}

}  // namespace zeltests
