#include <filesystem>

#include <zelaudiofilterhost/BannedPluginManager.h>

#include "CatalogueTestSupport.h"

namespace {

using namespace zelaudiofilterhost;
using zeltests::MakeFailure;
using zeltests::MakeInfo;
using zeltests::Narrow;
using zeltests::StateOfCatalogue;
using zeltests::U;
using zeltests::Vst;
using zeltests::Vst3;
using zeltests::WriteFile;

class PluginModuleInfoManagerTest : public zeltests::CatalogueTest {
protected:
    std::vector<std::string> Names() const {
        std::vector<std::string> names;
        for (auto info = Catalogue().PluginInfoBegin(); info != Catalogue().PluginInfoEnd(); ++info) {
            names.push_back(Narrow((*info)->GetName()));
        }
        return names;
    }
    std::size_t CountFailures() const {
        return static_cast<std::size_t>(Catalogue().FailureEnd() - Catalogue().FailureBegin());
    }
    void Disable(const PluginLocator& locator) const { Catalogue().FindPluginInfo(locator)->SetEnabled(false); }
    bool IsEnabled(const PluginLocator& locator) const { return Catalogue().FindPluginInfo(locator)->IsEnabled(); }
};

typedef std::vector<std::string> Strings;

TEST_F(PluginModuleInfoManagerTest, EntriesKeepTheOrderInWhichTheyCameAndAReplacedOneItsPlace) {
    Catalogue().AddPluginInfo(MakeInfo(Vst("/b"), "B"));
    Catalogue().AddPluginInfo(MakeInfo(Vst("/a"), "A"));
    Catalogue().AddPluginInfo(MakeInfo(Vst3("/b"), "B3"));
    Catalogue().AddPluginInfo(MakeInfo(Vst("/b"), "B new"));
    EXPECT_EQ(Names(), (Strings{"B new", "A", "B3"}));
    Catalogue().RemovePluginLocators({Vst("/b")});
    Catalogue().AddPluginInfo(MakeInfo(Vst("/b"), "B again"));
    EXPECT_EQ(Names(), (Strings{"A", "B3", "B again"}));
}

TEST_F(PluginModuleInfoManagerTest, ALocatorIsEitherWorkingOrFailed) {
    Catalogue().AddPluginInfo(MakeInfo(Vst("/a")));
    Catalogue().AddFailure(MakeFailure(Vst("/a")));
    EXPECT_FALSE(Catalogue().FindPluginInfo(Vst("/a")));
    EXPECT_EQ(CountFailures(), 1u);
    Catalogue().AddFailure(MakeFailure(Vst("/a"), "another reason"));
    EXPECT_EQ(CountFailures(), 1u);
    EXPECT_EQ(Narrow(Catalogue().FailureBegin()->reason), "another reason");
    Catalogue().AddPluginInfo(MakeInfo(Vst("/a")));
    EXPECT_TRUE(Catalogue().FindPluginInfo(Vst("/a")));
    EXPECT_EQ(CountFailures(), 0u);
}

TEST_F(PluginModuleInfoManagerTest, RemovingManyAtOnceLeavesTheOthersFindable) {
    std::vector<PluginLocator> removed;
    for (int i = 0; i < 1000; ++i) {
        const PluginLocator locator = Vst("/plugin" + std::to_string(i));
        Catalogue().AddPluginInfo(MakeInfo(locator, std::to_string(i)));
        if (i % 3 != 0) removed.push_back(locator);
    }
    removed.push_back(Vst("/never known"));
    removed.push_back(removed.front());
    Catalogue().RemovePluginLocators(removed);
    EXPECT_EQ(Names().size(), 334u);
    for (int i = 0; i < 1000; ++i) {
        const auto info = Catalogue().FindPluginInfo(Vst("/plugin" + std::to_string(i)));
        ASSERT_EQ(bool(info), i % 3 == 0);
        if (info) {
            EXPECT_EQ(Narrow(info->GetName()), std::to_string(i));
        }
    }
}

TEST_F(PluginModuleInfoManagerTest, WhatCannotStandInTheFileIsNotTakenUp) {
    Catalogue().AddPluginInfo(nullptr);
    Catalogue().AddPluginInfo(MakeInfo(PluginLocator()));
    Catalogue().AddPluginInfo(MakeInfo(PluginLocator(static_cast<TechnologyType>(7), U("/x"))));
    Catalogue().AddPluginInfo(MakeInfo(PluginLocator(kTechnologyVST, ustring(40000, 'x'))));
    Catalogue().AddFailure(MakeFailure(PluginLocator()));
    EXPECT_EQ(Names(), Strings());
    EXPECT_EQ(CountFailures(), 0u);
}

TEST_F(PluginModuleInfoManagerTest, AChoiceSurvivesReplacementRemovalAndFailure) {
    Catalogue().AddPluginInfo(MakeInfo(Vst("/a")));
    Disable(Vst("/a"));
    Catalogue().AddPluginInfo(MakeInfo(Vst("/a"), "Replaced"));
    EXPECT_FALSE(IsEnabled(Vst("/a")));
    Catalogue().RemovePluginLocators({Vst("/a")});
    Catalogue().AddPluginInfo(MakeInfo(Vst("/a")));
    EXPECT_FALSE(IsEnabled(Vst("/a")));
    Catalogue().AddFailure(MakeFailure(Vst("/a")));
    Catalogue().RemovePluginLocators({Vst("/a")});
    Catalogue().RemovePluginLocators({Vst("/a")});
    Catalogue().AddPluginInfo(MakeInfo(Vst("/a")));
    EXPECT_FALSE(IsEnabled(Vst("/a")));
    Catalogue().FindPluginInfo(Vst("/a"))->SetEnabled(true);
    Catalogue().RemovePluginLocators({Vst("/a")});
    Catalogue().AddPluginInfo(MakeInfo(Vst("/a")));
    EXPECT_TRUE(IsEnabled(Vst("/a")));
}

TEST_F(PluginModuleInfoManagerTest, AnEntryThatWasReplacedNoLongerChangesTheCatalogue) {
    const auto old = MakeInfo(Vst("/a"));
    Catalogue().AddPluginInfo(old);
    Catalogue().AddPluginInfo(MakeInfo(Vst("/a")));
    Save();
    const std::string text = Text();
    old->SetEnabled(false);
    Save();
    EXPECT_EQ(Text(), text);
    EXPECT_TRUE(IsEnabled(Vst("/a")));
}

TEST_F(PluginModuleInfoManagerTest, TheDisplayStringIsThePathWithTheSubcomponentInBrackets) {
    EXPECT_EQ(Narrow(Catalogue().GetDisplayStringForLocator(Vst("/x/Echo.so"))), "/x/Echo.so");
    EXPECT_EQ(
        Narrow(Catalogue().GetDisplayStringForLocator(PluginLocator(kTechnologyVST, U("/x/Shell.so"), U("Hall")))),
        "/x/Shell.so (Hall)");
    EXPECT_EQ(Narrow(Catalogue().GetDisplayStringForLocator(PluginLocator())), "");
}

TEST_F(PluginModuleInfoManagerTest, TheChangedSignalIsFiredByItsUsersAlone) {
    int fired = 0;
    const boost::signals::scoped_connection connection(
        Catalogue().GetPluginInfosChangedSignal().connect([&fired] { ++fired; }));
    Catalogue().AddPluginInfo(MakeInfo(Vst("/a")));
    Save();
    Load();
    EXPECT_EQ(fired, 0);
    Catalogue().GetPluginInfosChangedSignal()();
    EXPECT_EQ(fired, 1);
}

TEST_F(PluginModuleInfoManagerTest, ResetToDefaultFoldersGivesEachTechnologyItsOwn) {
    const zeltests::ScopedVariable home("HOME", "/home/ada");
    Catalogue().ResetToDefaultFolders();
    const auto technology = Catalogue().GetPluginTechnology(kTechnologyVST3);
    EXPECT_EQ(std::vector<ustring>(technology->DirectoryBegin(), technology->DirectoryEnd()),
              technology->GetDefaultDirectories());
    EXPECT_NE(technology->DirectoryBegin(), technology->DirectoryEnd());
}

// ---- configuration texts

TEST_F(PluginModuleInfoManagerTest, AConfigurationTextCarriesEntriesAndFailuresFromOneProcessToAnother) {
    Catalogue().GetPluginTechnology(kTechnologyVST)->SetPluginDirectories({U("/folder")});
    Catalogue().AddPluginInfo(MakeInfo(Vst("/a"), "A"));
    Catalogue().AddFailure(MakeFailure(Vst3("/b"), "why <not> \"&\" so"));
    const std::string state = StateOfCatalogue();
    const std::string text = Catalogue().GetConfigurationText({Vst("/a"), Vst3("/b"), Vst("/unknown")});
    EXPECT_EQ(text.find("/folder"), std::string::npos);
    Forget();
    Catalogue().GetPluginTechnology(kTechnologyVST)->SetPluginDirectories({U("/folder")});
    EXPECT_TRUE(Catalogue().AddConfiguration(text, false));
    EXPECT_EQ(StateOfCatalogue(), state);
}

TEST_F(PluginModuleInfoManagerTest, TheScannersTextNeverOverridesTheUsersChoice) {
    Catalogue().AddPluginInfo(MakeInfo(Vst("/a")));
    Catalogue().AddPluginInfo(MakeInfo(Vst("/b")));
    Disable(Vst("/b"));
    const std::string text = Catalogue().GetConfigurationText({Vst("/a"), Vst("/b")});
    Disable(Vst("/a"));
    Catalogue().FindPluginInfo(Vst("/b"))->SetEnabled(true);
    Catalogue().RemovePluginLocators({Vst("/a")});
    EXPECT_TRUE(Catalogue().AddConfiguration(text, false));
    EXPECT_FALSE(IsEnabled(Vst("/a")));
    EXPECT_TRUE(IsEnabled(Vst("/b")));
}

TEST_F(PluginModuleInfoManagerTest, AWholeConfigurationBringsChoicesOnlyForWhatIsUnknownHere) {
    Catalogue().AddPluginInfo(MakeInfo(Vst("/a")));
    Catalogue().AddPluginInfo(MakeInfo(Vst("/b")));
    Disable(Vst("/a"));
    Disable(Vst("/b"));
    Save();
    const std::string text = Text();
    Forget();
    Catalogue().AddPluginInfo(MakeInfo(Vst("/b")));
    EXPECT_TRUE(Catalogue().AddConfiguration(text, true));
    EXPECT_FALSE(IsEnabled(Vst("/a")));
    EXPECT_TRUE(IsEnabled(Vst("/b")));
}

TEST_F(PluginModuleInfoManagerTest, FoldersOfAConfigurationAreTakenOnlyOnRequest) {
    Catalogue().GetPluginTechnology(kTechnologyVST)->SetPluginDirectories({U("/theirs")});
    Save();
    const std::string text = Text();
    Catalogue().GetPluginTechnology(kTechnologyVST)->SetPluginDirectories({U("/ours")});
    EXPECT_TRUE(Catalogue().AddConfiguration(text, false));
    EXPECT_EQ(Narrow(*Catalogue().GetPluginTechnology(kTechnologyVST)->DirectoryBegin()), "/ours");
    EXPECT_TRUE(Catalogue().AddConfiguration(text, true));
    EXPECT_EQ(Narrow(*Catalogue().GetPluginTechnology(kTechnologyVST)->DirectoryBegin()), "/theirs");
}

TEST_F(PluginModuleInfoManagerTest, OfDuplicatesInAConfigurationTheLastOneCounts) {
    Catalogue().AddPluginInfo(MakeInfo(Vst("/a"), "First"));
    std::string text = Catalogue().GetConfigurationText({Vst("/a")});
    Catalogue().AddPluginInfo(MakeInfo(Vst("/a"), "Last"));
    const std::string other = Catalogue().GetConfigurationText({Vst("/a")});
    const std::size_t begin = other.find("<module"), end = other.find("</audioplugins>");
    text.insert(text.find("</audioplugins>"), other.substr(begin, end - begin));
    Forget();
    EXPECT_TRUE(Catalogue().AddConfiguration(text, false));
    EXPECT_EQ(Names(), Strings{"Last"});
}

TEST_F(PluginModuleInfoManagerTest, ATextThatIsNoConfigurationChangesNothing) {
    Catalogue().AddPluginInfo(MakeInfo(Vst("/a"), "A"));
    const std::string text = Catalogue().GetConfigurationText({Vst("/a")});
    Catalogue().RemovePluginLocators({Vst("/a")});
    Catalogue().AddPluginInfo(MakeInfo(Vst("/b"), "B"));
    const std::string state = StateOfCatalogue();

    for (std::size_t length = 0; length + 2 < text.size(); ++length) {
        ASSERT_FALSE(Catalogue().AddConfiguration(text.substr(0, length), true)) << length;
    }
    std::string wrongType = text;
    wrongType.replace(wrongType.find("technology=\"2\""), 14, "technology=\"7\"");
    for (const std::string& bad :
         {std::string("text"), std::string(100, '\0'), "<bannedplugins version=\"1\"></bannedplugins>" + std::string(),
          std::string("<audioplugins version=\"2\">\n</audioplugins>\n"),
          std::string("<audioplugins>\n</audioplugins>\n"), text + text, wrongType,
          std::string(
              "<audioplugins version=\"1\">\n<module technology=\"2\" path=\"/x\"></module>\n</audioplugins>\n")}) {
        EXPECT_FALSE(Catalogue().AddConfiguration(bad, true)) << bad;
    }
    EXPECT_EQ(StateOfCatalogue(), state);
    EXPECT_TRUE(Catalogue().AddConfiguration(text, true));
}

TEST_F(PluginModuleInfoManagerTest, AConfigurationIsTakenUpToSixteenMebibytes) {
    const std::string head = "<audioplugins version=\"1\">\n", tail = "</audioplugins>\n";
    const std::size_t limit = std::size_t(16) << 20;
    std::string text = head + std::string(limit - head.size() - tail.size(), '\n') + tail;
    EXPECT_TRUE(Catalogue().AddConfiguration(text, false));
    text.insert(head.size(), "\n");
    EXPECT_FALSE(Catalogue().AddConfiguration(text, false));
}

TEST_F(PluginModuleInfoManagerTest, AConfigurationThatAnEditorHasSetAnewIsUnderstood) {
    EXPECT_TRUE(Catalogue().AddConfiguration(
        "<!-- mine -->\n<audioplugins\n  version='1'><module technology='2' path='/a' name='A'>\n"
        "  <component name='A'/>\n</module><failed technology='3'\n path='/b'/></audioplugins>",
        false));
    EXPECT_EQ(Names(), Strings{"A"});
    EXPECT_EQ(CountFailures(), 1u);
}

// ---- candidates

class CollectPotentialPluginsTest : public PluginModuleInfoManagerTest {
protected:
    CollectPotentialPluginsTest() {
        std::filesystem::create_directories(mFolder.Path("plugins/inner"));
        for (const char* name : {"plugins/a" ZEL_MODULE, "plugins/b" ZEL_MODULE, "plugins/inner/c" ZEL_MODULE})
            WriteFile(mFolder.Path(name), "x");
        std::filesystem::create_directories(mFolder.Path("plugins/D.vst3/Contents"));
        for (const TechnologyType type : {kTechnologyVST, kTechnologyVST3}) {
            Catalogue().GetPluginTechnology(type)->SetPluginDirectories(
                {mFolder.UPath("plugins"), mFolder.UPath("plugins/inner"), mFolder.UPath("missing")});
        }
    }
    PluginLocator In(const std::string& name) const { return Vst(mFolder.Path("plugins/" + name)); }
    Strings Collect(bool onlyNewOrChanged) {
        return NamesOf(Catalogue().CollectPotentialPlugins(onlyNewOrChanged, mRemoved));
    }
    Strings NamesOf(const std::vector<PluginLocator>& locators) const {
        Strings names;
        for (const PluginLocator& locator : locators) {
            names.push_back(Narrow(locator.GetPath()).substr(mFolder.Path("plugins/").size()));
        }
        return names;
    }
    /// Takes the file up as it is now.
    void Know(const PluginLocator& locator) const {
        Catalogue().AddPluginInfo(new PluginModuleInfo(locator, U("x"), PluginFingerprint::Take(locator.GetPath()),
                                                       {zeltests::MakeComponent("x")}));
    }

    std::vector<PluginLocator> mRemoved;
};

TEST_F(CollectPotentialPluginsTest, EachCandidateOfAllFoldersIsCollectedOnce) {
    EXPECT_EQ(Collect(false), (Strings{"a" ZEL_MODULE, "b" ZEL_MODULE, "inner/c" ZEL_MODULE, "D.vst3"}));
    EXPECT_EQ(Collect(true), (Strings{"a" ZEL_MODULE, "b" ZEL_MODULE, "inner/c" ZEL_MODULE, "D.vst3"}));
    EXPECT_TRUE(mRemoved.empty());
}

TEST_F(CollectPotentialPluginsTest, WhatIsKnownAsWorkingOrFailedIsCollectedAgainOnlyWhenItsFileChanges) {
    Know(In("a" ZEL_MODULE));
    Catalogue().AddFailure({In("b" ZEL_MODULE), PluginFingerprint::Take(In("b" ZEL_MODULE).GetPath()), U("bad")});
    EXPECT_EQ(Collect(true), (Strings{"inner/c" ZEL_MODULE, "D.vst3"}));
    WriteFile(mFolder.Path("plugins/a" ZEL_MODULE), "longer");
    WriteFile(mFolder.Path("plugins/b" ZEL_MODULE), "longer");
    EXPECT_EQ(Collect(true), (Strings{"a" ZEL_MODULE, "b" ZEL_MODULE, "inner/c" ZEL_MODULE, "D.vst3"}));
}

TEST_F(CollectPotentialPluginsTest, ABundleHasChangedWhenAnyOfItsFilesHas) {
    const PluginLocator bundle = Vst3(mFolder.Path("plugins/D.vst3"));
    Know(bundle);
    EXPECT_EQ(Collect(true), (Strings{"a" ZEL_MODULE, "b" ZEL_MODULE, "inner/c" ZEL_MODULE}));
    WriteFile(mFolder.Path("plugins/D.vst3/Contents/preset"), "new");
    EXPECT_EQ(Collect(true), (Strings{"a" ZEL_MODULE, "b" ZEL_MODULE, "inner/c" ZEL_MODULE, "D.vst3"}));
}

TEST_F(CollectPotentialPluginsTest, BannedPluginsAreNoCandidates) {
    BannedPluginManager::GetInstance().AddBannedPlugin(In("b" ZEL_MODULE));
    EXPECT_EQ(Collect(false), (Strings{"a" ZEL_MODULE, "inner/c" ZEL_MODULE, "D.vst3"}));
    BannedPluginManager::GetInstance().RemoveBannedPlugin(In("b" ZEL_MODULE));
    EXPECT_EQ(Collect(false).size(), 4u);
}

TEST_F(CollectPotentialPluginsTest, EntriesWhoseFilesAreGoneAreReportedAndKept) {
    Know(In("a" ZEL_MODULE));
    Know(In("b" ZEL_MODULE));
    Catalogue().AddFailure(MakeFailure(In("gone" ZEL_MODULE)));
    Catalogue().AddPluginInfo(MakeInfo(PluginLocator(kTechnologyBuiltIn, U("gain"))));
    std::filesystem::remove(mFolder.Path("plugins/a" ZEL_MODULE));
    mRemoved = {Vst("/left over")};
    Collect(true);
    EXPECT_EQ(mRemoved, (std::vector<PluginLocator>{In("a" ZEL_MODULE), In("gone" ZEL_MODULE)}));
    EXPECT_TRUE(Catalogue().FindPluginInfo(In("a" ZEL_MODULE)));
}

TEST_F(CollectPotentialPluginsTest, AFolderMayBeSearchedForEveryTechnologyAlone) {
    Catalogue().GetPluginTechnology(kTechnologyVST)->SetPluginDirectories({});
    EXPECT_EQ(NamesOf(Catalogue().CollectPotentialPluginsIn({mFolder.UPath("plugins")}, false)),
              (Strings{"a" ZEL_MODULE, "b" ZEL_MODULE, "inner/c" ZEL_MODULE, "D.vst3"}));
    Know(In("inner/c" ZEL_MODULE));
    EXPECT_EQ(NamesOf(Catalogue().CollectPotentialPluginsIn({mFolder.UPath("plugins/inner")}, true)), Strings());
    EXPECT_EQ(NamesOf(Catalogue().CollectPotentialPluginsIn({mFolder.UPath("plugins/inner")}, false)),
              Strings{"inner/c" ZEL_MODULE});
    EXPECT_EQ(NamesOf(Catalogue().CollectPotentialPluginsIn({U("inner"), U("")}, false)), Strings());
}

}  // namespace
