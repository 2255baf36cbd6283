#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <set>

#include <gmock/gmock.h>
#include <zelaudiofilterhost/BannedPluginManager.h>
#include <zelaudiofilterhost/PluginModuleInfoManager.h>
#include <zelaudiofilterhostui/AudioPluginScan.h>
#include <zelcore/Utf.h>

#include "ProcessList.h"
#include "ScanFixture.h"

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
        setenv("ZEL_SCANNER_TIMEOUT_SECONDS", "2", 1);
        setenv("ZEL_SCANNER_MEMORY_MB", "300", 1);
        UseRealScanner();
    }
    ~RealScannerScanTest() override {
        unsetenv("ZEL_SCANNER_TIMEOUT_SECONDS");
        unsetenv("ZEL_SCANNER_MEMORY_MB");
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
            locators.push_back(Vst(entry.path().string()));
        for (const auto& entry : std::filesystem::directory_iterator(TestPlugin("vst3/" + kind)))
            locators.push_back(Vst3(entry.path().string()));
        std::sort(locators.begin(), locators.end());
        return locators;
    }

    static std::vector<std::string> GetPaths(const std::vector<PluginLocator>& locators) {
        std::vector<std::string> paths;
        for (const PluginLocator& locator : locators) paths.push_back(ToBytes(locator.GetPath()));
        return paths;
    }

    /// The bad ones that take the process down or never come back; the others say of themselves that they do not work.
    static bool IsDeadly(const std::string& path) {
        const std::string name = std::filesystem::path(path).stem().string();
        static const std::set<std::string> kDeadly = {"abort_when_opened",
                                                      "allocate_when_opened",
                                                      "crash_in_entry",
                                                      "crash_on_load",
                                                      "crash_when_closed",
                                                      "crash_when_described",
                                                      "exit_when_opened",
                                                      "hang_when_opened",
                                                      "Allocate3",
                                                      "Crash3",
                                                      "CrashInit3",
                                                      "Exit3",
                                                      "Hang3"};
        return kDeadly.contains(name);
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
        if (IsDeadly(ToBytes(locator.GetPath()))) deadly.push_back(ToBytes(locator.GetPath()));
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
    Scan({Vst(TestPlugin("vst/bad/crash_when_described.so")), Vst(TestPlugin("vst/bad/hang_when_opened.so")),
          Vst(TestPlugin("vst/bad/exit_when_opened.so")), Vst(TestPlugin("vst/bad/allocate_when_opened.so"))});
    auto& bans = zelaudiofilterhost::BannedPluginManager::GetInstance();
    const auto reason = [&](const char* name) { return ToBytes(bans.GetReason(Vst(TestPlugin(name)))); };
    // A sanitizer ends the process by itself instead of leaving the signal to the system.
    EXPECT_THAT(reason("vst/bad/crash_when_described.so"),
                testing::AnyOf("crashed while it was scanned: Segmentation fault", testing::HasSubstr("exit code")));
    EXPECT_EQ("did not answer within the time limit while it was scanned", reason("vst/bad/hang_when_opened.so"));
    EXPECT_EQ("ended the scanner process (exit code 0)", reason("vst/bad/exit_when_opened.so"));
    EXPECT_EQ("took more memory than the limit while it was scanned", reason("vst/bad/allocate_when_opened.so"));
}

TEST_F(RealScannerScanTest, BothWaysOfScanningGiveTheSameCatalogue) {
    std::vector<PluginLocator> harmless = GetAll("good");
    for (const PluginLocator& locator : GetAll("bad"))
        if (!IsDeadly(ToBytes(locator.GetPath()))) harmless.push_back(locator);
    for (const char* name : {"text.so", "empty.so", "cut_off.so", "other_processor.so"})
        harmless.push_back(Vst(TestPlugin(std::string("notplugins/") + name)));
    auto& catalogue = zelaudiofilterhost::PluginModuleInfoManager::GetInstance();
    Scan(harmless);
    const std::string separate = catalogue.GetConfigurationText(harmless);
    AudioPluginScan(nullptr).ScanForPlugins(nullptr, harmless, false);
    EXPECT_EQ(separate, catalogue.GetConfigurationText(harmless));
    EXPECT_GE(GetCatalogued().size(), GetAll("good").size());
}

TEST_F(RealScannerScanTest, ShellsAndModulesWithSeveralClassesYieldAllTheirComponents) {
    const PluginLocator shell = Vst(TestPlugin("vst/good/zel_shell.so"));
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
    const PluginLocator banned = Vst(TestPlugin("vst/good/zel_gain.so"));
    bans.AddBannedPlugin(banned);
    bans.SaveConfiguration(zelcore::filesupport::File(zelcore::utility::UTF8to16(GetBansPath())));
    Scan({banned, Vst(TestPlugin("vst/good/zel_synth.so"))});
    EXPECT_THAT(GetCatalogued(), ElementsAre(TestPlugin("vst/good/zel_synth.so")));
}

TEST_F(RealScannerScanTest, CancelOfAHangingPluginEndsTheScannerAtOnce) {
    setenv("ZEL_SCANNER_TIMEOUT_SECONDS", "600", 1);
    const std::size_t before = ProcessList::CountScanners();
    WhenTrue([this] { return mShown.size() == 2; }, [] { ClickCancel(); });
    Scan({Vst(TestPlugin("vst/good/zel_gain.so")), Vst(TestPlugin("vst/bad/hang_when_opened.so")),
          Vst(TestPlugin("vst/good/zel_synth.so"))});
    EXPECT_THAT(GetCataloguedInFile(), ElementsAre(TestPlugin("vst/good/zel_gain.so")));
    EXPECT_EQ(before, ProcessList::CountScanners());
}

}  // namespace zeltests
