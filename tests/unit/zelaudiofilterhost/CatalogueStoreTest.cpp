#include <filesystem>
#include <fstream>
#include <map>
#include <random>

#include <zelcore/FileError.h>

#include "CatalogueStoreStage.h"
#include "FileFacts.h"

namespace {

using namespace zelaudiofilterhost;
using zelcore::filesupport::FileError;
using zeltests::CatalogueStoreTest;
using zeltests::GetFileNumber;
using zeltests::MakeFailure;
using zeltests::MakeInfo;
using zeltests::Narrow;
using zeltests::SetChangeTime;
using zeltests::StateOfCatalogue;
using zeltests::U;
using zeltests::Vst;
using zeltests::Vst3;

TEST_F(CatalogueStoreTest, TheFileIsCalledAudioPluginCatalogue) {
    EXPECT_EQ(Narrow(Catalogue().GetSettingsFileName()), "AudioPluginCatalogue.xml");
}

TEST_F(CatalogueStoreTest, AllThatIsKnownComesBackFromTheFile) {
    Catalogue().AddPluginInfo(MakeInfo(Vst("/b"), "B"));
    Catalogue().AddPluginInfo(MakeInfo(Vst3("/a"), "A"));
    Catalogue().AddPluginInfo(MakeInfo(PluginLocator(kTechnologyAU, U("/au"), U("part"))));
    Catalogue().AddPluginInfo(MakeInfo(PluginLocator(kTechnologyBuiltIn, U("gain"))));
    Catalogue().AddFailure(MakeFailure(Vst("/z"), "reason"));
    Catalogue().AddFailure(MakeFailure(Vst("/y"), ""));
    Catalogue().FindPluginInfo(Vst3("/a"))->SetEnabled(false);
    Catalogue().GetPluginTechnology(kTechnologyVST)->SetPluginDirectories({U("/one"), U("/zwei ü & \"drei\"")});
    Save();
    ExpectFileToHoldTheState();
}

TEST_F(CatalogueStoreTest, EveryTextComesBackWhateverIsInIt) {
    std::mt19937 random(7);
    std::vector<ustring> texts;
    for (unsigned unit = 0; unit <= 0xFFFF; unit += 0x40) {
        ustring text = U("x");
        for (unsigned i = 0; i < 0x40; ++i) text.push_back(static_cast<ustring::value_type>(unit + i));
        texts.push_back(text);
    }
    for (int i = 0; i < 500; ++i) {
        ustring text = U("\\");
        static const ustring::value_type kUnits[] = {'\\', 'u', '0',  'd',  '&',    '<',
                                                     '>',  '"', '\'', '\n', 0xD83D, 0xDE00};
        for (int n = 0; n < 30; ++n) text.push_back(kUnits[random() % std::size(kUnits)]);
        texts.push_back(text);
    }
    std::vector<PluginLocator> locators;
    for (const ustring& text : texts) {
        locators.push_back(PluginLocator(kTechnologyVST, text, text));
        PluginComponentInfo component;
        component.vendor = text;
        Catalogue().AddPluginInfo(new PluginModuleInfo(locators.back(), text, PluginFingerprint(), {component}));
    }
    Save();
    Forget();
    EXPECT_EQ(Load(), PluginModuleInfoManager::kLoaded);
    for (std::size_t i = 0; i < texts.size(); ++i) {
        const auto info = Catalogue().FindPluginInfo(locators[i]);
        ASSERT_TRUE(info) << i;
        EXPECT_EQ(info->GetName(), texts[i]);
        EXPECT_EQ(info->GetVendor(), texts[i]);
    }
}

TEST_F(CatalogueStoreTest, ExtremeNumbersComeBack) {
    PluginComponentInfo component = zeltests::MakeComponent("x");
    component.uniqueId = 0xFFFFFFFFu;
    component.versionNumber = std::numeric_limits<std::int32_t>::min();
    component.parameterCount = PluginComponentInfo::kMaxParameters;
    const PluginFingerprint fingerprint{std::numeric_limits<std::uint64_t>::max(),
                                        std::numeric_limits<std::int64_t>::min()};
    Catalogue().AddPluginInfo(new PluginModuleInfo(Vst("/a"), U("a"), fingerprint, {component}));
    Save();
    ExpectFileToHoldTheState();
}

TEST_F(CatalogueStoreTest, AModuleOfTheLargestSizeIsSavedSoThatItCanBeLoaded) {
    PluginComponentInfo component = zeltests::MakeComponent("x");
    component.name = ustring(PluginComponentInfo::kMaxTextLength, 1);
    component.inputBuses.assign(PluginComponentInfo::kMaxBuses,
                                {ustring(PluginComponentInfo::kMaxTextLength, 2), 2, true});
    Catalogue().AddPluginInfo(new PluginModuleInfo(Vst("/a"), U("a"), PluginFingerprint(),
                                                   std::vector<PluginComponentInfo>(kMaxComponents, component)));
    Catalogue().AddPluginInfo(MakeInfo(Vst("/b")));
    const std::string text = Catalogue().GetConfigurationText({Vst("/a")});
    Save();
    Forget();
    EXPECT_EQ(Load(), PluginModuleInfoManager::kLoaded);
    EXPECT_TRUE(Catalogue().FindPluginInfo(Vst("/b")));
    ASSERT_TRUE(Catalogue().FindPluginInfo(Vst("/a")));
    EXPECT_GT(Catalogue().FindPluginInfo(Vst("/a"))->GetComponents().size(), 10u);
    EXPECT_TRUE(Catalogue().AddConfiguration(text, false));
}

TEST_F(CatalogueStoreTest, ChoicesForRemovedAndFailedPluginsAreInTheFile) {
    for (const char* path : {"/removed", "/failed", "/both", "/enabled"}) {
        Catalogue().AddPluginInfo(MakeInfo(Vst(path)));
        if (std::string(path) != "/enabled") Catalogue().FindPluginInfo(Vst(path))->SetEnabled(false);
    }
    Save();
    Catalogue().AddFailure(MakeFailure(Vst("/failed")));
    Catalogue().AddFailure(MakeFailure(Vst("/both")));
    Catalogue().RemovePluginLocators({Vst("/removed"), Vst("/both"), Vst("/enabled")});
    Save();
    for (const bool isRewritten : {false, true}) {
        if (isRewritten) std::filesystem::remove(mFolder.Path(kName)), Save();
        Forget();
        EXPECT_EQ(Load(), PluginModuleInfoManager::kLoaded);
        EXPECT_EQ(Catalogue().PluginInfoBegin(), Catalogue().PluginInfoEnd());
        EXPECT_EQ(Catalogue().FailureEnd() - Catalogue().FailureBegin(), 1);
    }
    for (const char* path : {"/removed", "/failed", "/both", "/enabled"}) {
        Catalogue().AddPluginInfo(MakeInfo(Vst(path)));
        EXPECT_EQ(Catalogue().FindPluginInfo(Vst(path))->IsEnabled(), std::string(path) == "/enabled") << path;
    }
}

TEST_F(CatalogueStoreTest, WithoutFoldersTheirListsAreLeftOutAndLoadingGivesTheDefaultOnes) {
    const zeltests::ScopedVariable home("HOME", "/home/ada");
    Catalogue().GetPluginTechnology(kTechnologyVST)->SetPluginDirectories({U("/mine")});
    Save(false);
    EXPECT_EQ(Text().find("/mine"), std::string::npos);
    EXPECT_EQ(Load(), PluginModuleInfoManager::kLoaded);
    const auto technology = Catalogue().GetPluginTechnology(kTechnologyVST);
    EXPECT_EQ(std::vector<ustring>(technology->DirectoryBegin(), technology->DirectoryEnd()),
              technology->GetDefaultDirectories());
    Catalogue().GetPluginTechnology(kTechnologyVST)->SetPluginDirectories({U("/mine")});
    Save(true);
    EXPECT_NE(Text().find("/mine"), std::string::npos);
    ExpectFileToHoldTheState();
}

TEST_F(CatalogueStoreTest, AnEmptyFolderListStaysEmpty) {
    Save();
    Catalogue().ResetToDefaultFolders();
    EXPECT_EQ(Load(), PluginModuleInfoManager::kLoaded);
    const auto technology = Catalogue().GetPluginTechnology(kTechnologyVST3);
    EXPECT_EQ(technology->DirectoryBegin(), technology->DirectoryEnd());
}

// ---- saving what has changed

TEST_F(CatalogueStoreTest, ASaveWithoutChangesWritesNothing) {
    AddMany(3);
    Save();
    Save();
    Load();
    SetChangeTime(mFolder.Path(kName), 1700000000000);
    const auto time = std::filesystem::last_write_time(mFolder.Path(kName));
    Load();
    Catalogue().FindPluginInfo(Vst("/plugin1"))->SetEnabled(true);
    Save();
    EXPECT_EQ(std::filesystem::last_write_time(mFolder.Path(kName)), time);
}

TEST_F(CatalogueStoreTest, AMissingFileIsWrittenEvenWithoutChanges) {
    Save();
    std::filesystem::remove(mFolder.Path(kName));
    Save();
    EXPECT_EQ(Load(), PluginModuleInfoManager::kLoaded);
}

TEST_F(CatalogueStoreTest, AChangeIsAddedToTheFileInPlace) {
    AddMany(100);
    Save();
    const std::uint64_t number = GetFileNumber(mFolder.Path(kName));
    const std::string before = Text();
    Catalogue().FindPluginInfo(Vst("/plugin50"))->SetEnabled(false);
    Save();
    EXPECT_EQ(GetFileNumber(mFolder.Path(kName)), number);
    const std::string tail = "</audioplugins>\n";
    EXPECT_TRUE(Text().starts_with(before.substr(0, before.size() - tail.size())));
    EXPECT_TRUE(Text().ends_with(tail));
    EXPECT_LT(Text().size(), before.size() + 3000);
    ExpectFileToHoldTheState();
}

TEST_F(CatalogueStoreTest, AChangeIsAddedToAFileThatWasLoaded) {
    AddMany(10);
    Save();
    const std::uint64_t number = GetFileNumber(mFolder.Path(kName));
    Forget();
    Load();
    Catalogue().AddFailure(MakeFailure(Vst("/plugin3")));
    Catalogue().GetPluginTechnology(kTechnologyVST3)->AddPluginDirectories({U("/new folder")});
    Save();
    EXPECT_EQ(GetFileNumber(mFolder.Path(kName)), number);
    ExpectFileToHoldTheState();
}

TEST_F(CatalogueStoreTest, AFileThatSomebodyElseTouchedIsReplacedWhole) {
    AddMany(10);
    Save();
    const std::string text = Text();
    std::ofstream(mFolder.Path(kName), std::ios::app) << "<!-- hello -->\n";
    Save();
    EXPECT_EQ(Text(), text);
}

TEST_F(CatalogueStoreTest, SavingToAnotherFileWritesItWholeAndTheFirstOneAgainNextTime) {
    AddMany(5);
    Save();
    const zelcore::filesupport::File other(mFolder.UPath("other.xml"));
    Catalogue().AddPluginInfo(MakeInfo(Vst("/later")));
    Catalogue().SaveConfiguration(other, true);
    EXPECT_EQ(Text().find("/later"), std::string::npos);
    Save();
    EXPECT_EQ(Text(), zeltests::ReadFile(mFolder.Path("other.xml")));
    ExpectFileToHoldTheState();
}

TEST_F(CatalogueStoreTest, OutdatedLinesAreClearedAwayFromTimeToTime) {
    AddMany(20);
    Save();
    const std::size_t size = Text().size();
    for (int i = 0; i < 2000; ++i) {
        Catalogue().FindPluginInfo(Vst("/plugin7"))->SetEnabled(i % 2 == 0);
        Save();
        ASSERT_LT(Text().size(), size * 20);
    }
    ExpectFileToHoldTheState();
}

TEST_F(CatalogueStoreTest, WhatCameAndWentBetweenTwoSavesLeavesNoTrace) {
    AddMany(2);
    Save();
    const std::string text = Text();
    Catalogue().AddPluginInfo(MakeInfo(Vst("/passing")));
    Catalogue().RemovePluginLocators({Vst("/passing")});
    Save();
    EXPECT_EQ(Text(), text);
}

TEST_F(CatalogueStoreTest, AnyHistoryOfChangesAndSavesLoadsAsItWasInMemory) {
    std::mt19937 random(11);
    std::map<PluginLocator, bool> choices;
    for (int step = 0; step < 4000; ++step) {
        const PluginLocator locator = Vst("/plugin" + std::to_string(random() % 40));
        switch (random() % 8) {
            case 0:
            case 1:
                Catalogue().AddPluginInfo(MakeInfo(locator, std::to_string(step)));
                break;
            case 2:
                Catalogue().AddFailure(MakeFailure(locator, std::to_string(step)));
                break;
            case 3:
                Catalogue().RemovePluginLocators({locator, Vst("/plugin" + std::to_string(random() % 40))});
                break;
            case 4:
            case 5:
                if (const auto info = Catalogue().FindPluginInfo(locator)) {
                    choices[locator] = random() % 2 == 0;
                    info->SetEnabled(choices[locator]);
                }
                break;
            case 6:
                Save();
                break;
            default:
                if (random() % 8 != 0) break;
                Catalogue().GetPluginTechnology(kTechnologyVST)->SetPluginDirectories({U("/" + std::to_string(step))});
        }
        if (step % 50 != 0) continue;
        Save();
        ExpectFileToHoldTheState();
        ASSERT_FALSE(HasFailure()) << step;
    }
    for (const auto& [locator, enabled] : choices) {
        Catalogue().AddPluginInfo(MakeInfo(locator));
        EXPECT_EQ(Catalogue().FindPluginInfo(locator)->IsEnabled(), enabled);
    }
}

TEST_F(CatalogueStoreTest, AFolderThatIsNotThereIsAnErrorAndChangesNothing) {
    AddMany(2);
    const std::string state = StateOfCatalogue();
    EXPECT_THROW(Catalogue().SaveConfiguration(zelcore::filesupport::File(mFolder.UPath("missing/file.xml")), true),
                 FileError);
    EXPECT_EQ(StateOfCatalogue(), state);
    Save();
    ExpectFileToHoldTheState();
}

}  // namespace
