#include <filesystem>
#include <random>
#include <set>
#include <sstream>

#include "CatalogueTestSupport.h"

namespace {

using namespace zelaudiofilterhost;
using zeltests::MakeFailure;
using zeltests::MakeInfo;
using zeltests::Narrow;
using zeltests::ReadFile;
using zeltests::StateOfCatalogue;
using zeltests::U;
using zeltests::Vst;
using zeltests::Vst3;

class CatalogueReaderTest : public zeltests::CatalogueTest {
protected:
    /// A file of two modules, a failure and a choice, written whole.
    void SaveSmallFile() const {
        Catalogue().GetPluginTechnology(kTechnologyVST)->SetPluginDirectories({U("/mine")});
        Catalogue().AddPluginInfo(MakeInfo(Vst("/a"), "A"));
        Catalogue().AddPluginInfo(MakeInfo(Vst("/b"), "B"));
        Catalogue().AddPluginInfo(MakeInfo(Vst("/gone")));
        Catalogue().FindPluginInfo(Vst("/gone"))->SetEnabled(false);
        Catalogue().RemovePluginLocators({Vst("/gone")});
        Catalogue().AddFailure(MakeFailure(Vst3("/c")));
        Save();
    }
    void ExpectDefaultsAndNothingElse() const {
        EXPECT_EQ(Catalogue().PluginInfoBegin(), Catalogue().PluginInfoEnd());
        EXPECT_EQ(Catalogue().FailureBegin(), Catalogue().FailureEnd());
        const auto technology = Catalogue().GetPluginTechnology(kTechnologyVST);
        EXPECT_EQ(std::vector<ustring>(technology->DirectoryBegin(), technology->DirectoryEnd()),
                  technology->GetDefaultDirectories());
    }
    void ExpectKeptAside(const std::string& text) const {
        // Where something was recovered, it is in a new file under the old name.
        std::vector<std::string> names = NamesInFolder();
        std::erase(names, std::string(kName));
        EXPECT_EQ(names, std::vector<std::string>{std::string(kName) + ".unreadable"});
        EXPECT_EQ(ReadFile(mFolder.Path(std::string(kName) + ".unreadable")), text);
        std::filesystem::remove(mFolder.Path(std::string(kName) + ".unreadable"));
    }
};

/// The lines of a state, to see whether one state is part of another.
std::set<std::string> Lines(const std::string& text) {
    std::istringstream stream(text);
    std::set<std::string> lines;
    for (std::string line; std::getline(stream, line);) lines.insert(line);
    return lines;
}

bool IsPartOf(const std::string& part, const std::string& whole) {
    const std::set<std::string> parts = Lines(part), wholes = Lines(whole);
    return std::all_of(parts.begin(), parts.end(), [&wholes](const std::string& line) {
        const bool isFolders = line.starts_with("2:") || line.starts_with("3:") || line.starts_with("4:");
        return isFolders || wholes.contains(line);
    });
}

TEST_F(CatalogueReaderTest, AMissingFileIsAnEmptyCatalogueWithTheDefaultFolders) {
    Catalogue().AddPluginInfo(MakeInfo(Vst("/a")));
    EXPECT_EQ(Load(), PluginModuleInfoManager::kMissing);
    ExpectDefaultsAndNothingElse();
    EXPECT_EQ(NamesInFolder(), std::vector<std::string>());
}

TEST_F(CatalogueReaderTest, AFileCutOffAnywhereGivesEveryWholeLineAndIsKeptAside) {
    SaveSmallFile();
    const std::string state = StateOfCatalogue(), text = Text();
    const std::size_t root = text.find("<audioplugins version=\"1\">") + 26;
    std::size_t most = 0;
    for (std::size_t length = 0; length + 2 <= text.size(); ++length) {
        SetText(text.substr(0, length));
        const auto outcome = Load();
        ASSERT_EQ(outcome, length < root ? PluginModuleInfoManager::kKeptAside : PluginModuleInfoManager::kRecovered)
            << length;
        ASSERT_TRUE(IsPartOf(StateOfCatalogue(), state)) << length;
        ExpectKeptAside(text.substr(0, length));
        ASSERT_FALSE(HasFailure()) << length;
        const auto found = static_cast<std::size_t>(Catalogue().PluginInfoEnd() - Catalogue().PluginInfoBegin());
        ASSERT_GE(found, most);
        most = found;
    }
    EXPECT_EQ(most, 2u);
    EXPECT_EQ(StateOfCatalogue(), state);
}

TEST_F(CatalogueReaderTest, WhatWasRecoveredIsThereAtTheNextStartToo) {
    SaveSmallFile();
    SetText(Text().substr(0, Text().size() - 20));
    EXPECT_EQ(Load(), PluginModuleInfoManager::kRecovered);
    const std::string state = StateOfCatalogue();
    Forget();
    EXPECT_EQ(Load(), PluginModuleInfoManager::kLoaded);
    EXPECT_EQ(StateOfCatalogue(), state);
}

TEST_F(CatalogueReaderTest, AListenerThatSavesWhileFoldersAreLoadedLosesNone) {
    for (const auto type : {kTechnologyVST, kTechnologyVST3})
        Catalogue().GetPluginTechnology(type)->SetPluginDirectories({U("/mine")});
    Save();
    const std::string state = StateOfCatalogue();
    Forget();
    {
        const boost::signals::scoped_connection connection =
            Catalogue().GetPluginTechnology(kTechnologyVST)->GetDirectoriesChangedSignal().connect([this] { Save(); });
        Load();
    }
    Save();
    Forget();
    Load();
    EXPECT_EQ(StateOfCatalogue(), state);
}

TEST_F(CatalogueReaderTest, AfterARecoveryTheNextSaveWritesAWholeFile) {
    SaveSmallFile();
    SetText(Text().substr(0, Text().size() - 20));
    EXPECT_EQ(Load(), PluginModuleInfoManager::kRecovered);
    const std::string state = StateOfCatalogue();
    Save();
    EXPECT_EQ(Load(), PluginModuleInfoManager::kLoaded);
    EXPECT_EQ(StateOfCatalogue(), state);
}

TEST_F(CatalogueReaderTest, ASaveThatWasInterruptedAnywhereLeavesTheStateBeforeIt) {
    SaveSmallFile();
    const std::string before = StateOfCatalogue();
    const std::size_t begin = Text().size() - std::string("</audioplugins>\n").size();
    Catalogue().RemovePluginLocators({Vst("/a")});
    Catalogue().AddPluginInfo(MakeInfo(Vst("/new")));
    Catalogue().AddFailure(MakeFailure(Vst("/b")));
    Catalogue().GetPluginTechnology(kTechnologyVST)->SetPluginDirectories({U("/other")});
    Save();
    const std::string after = StateOfCatalogue(), text = Text();
    int early = 0, late = 0;
    for (std::size_t length = begin; length < text.size(); ++length) {
        SetText(text.substr(0, length));
        Load();
        const std::string state = StateOfCatalogue();
        ASSERT_TRUE(state == before || state == after) << length << '\n' << state;
        ++(state == before ? early : late);
    }
    EXPECT_GT(early, 500);
    EXPECT_GT(late, 0);
    EXPECT_LE(late, 18) << "only the closing tag may be missing for the new state to count";
}

TEST_F(CatalogueReaderTest, ADamagedLineCostsThatLineAlone) {
    SaveSmallFile();
    std::string text = Text();
    const std::size_t line = text.find("<module technology=\"2\" path=\"/a\"");
    text[line + 20] = '<';
    SetText(text);
    EXPECT_EQ(Load(), PluginModuleInfoManager::kRecovered);
    EXPECT_FALSE(Catalogue().FindPluginInfo(Vst("/a")));
    EXPECT_TRUE(Catalogue().FindPluginInfo(Vst("/b")));
    EXPECT_EQ(Catalogue().FailureEnd() - Catalogue().FailureBegin(), 1);
    EXPECT_EQ(Narrow(*Catalogue().GetPluginTechnology(kTechnologyVST)->DirectoryBegin()), "/mine");
    ExpectKeptAside(text);
}

TEST_F(CatalogueReaderTest, ADamagedFirstLineCostsNoEntry) {
    SaveSmallFile();
    std::string text = Text();
    text[text.find("<audioplugins") + 4] = '"';
    SetText(text);
    EXPECT_EQ(Load(), PluginModuleInfoManager::kRecovered);
    EXPECT_EQ(Catalogue().PluginInfoEnd() - Catalogue().PluginInfoBegin(), 2);
    ExpectKeptAside(text);
}

TEST_F(CatalogueReaderTest, ALineOfZerosAsAPowerCutLeavesItIsRecoveredFrom) {
    SaveSmallFile();
    std::string text = Text();
    text.resize(text.size() - 30);
    text += std::string(4096, '\0');
    SetText(text);
    EXPECT_EQ(Load(), PluginModuleInfoManager::kRecovered);
    EXPECT_EQ(Catalogue().PluginInfoEnd() - Catalogue().PluginInfoBegin(), 2);
    ExpectKeptAside(text);
}

TEST_F(CatalogueReaderTest, WhatIsNoCatalogueIsKeptAside) {
    std::mt19937 random(5);
    std::string noise(5000, '\0');
    for (char& byte : noise) byte = static_cast<char>(random());
    for (const std::string& text :
         {std::string(), std::string("\n"), std::string("hello"), noise, std::string(10000, '\0'),
          std::string("<?xml version=\"1.0\"?>\n<html>\n<body/>\n</html>\n"),
          std::string("<bannedplugins version=\"1\">\n<module technology=\"2\" path=\"/a\"><component/></module>\n"),
          std::string("<audioplugins version=\"2\">\n<module technology=\"2\" path=\"/a\"><component/></module>\n"
                      "</audioplugins>\n"),
          std::string("{\"audioplugins\": 1}")}) {
        Catalogue().AddPluginInfo(MakeInfo(Vst("/old")));
        SetText(text);
        EXPECT_EQ(Load(), PluginModuleInfoManager::kKeptAside) << text.substr(0, 60);
        ExpectDefaultsAndNothingElse();
        ExpectKeptAside(text);
    }
}

TEST_F(CatalogueReaderTest, FilesKeptAsideDoNotReplaceEachOther) {
    for (int i = 0; i < 3; ++i) {
        SetText("garbage " + std::to_string(i));
        EXPECT_EQ(Load(), PluginModuleInfoManager::kKeptAside);
    }
    EXPECT_EQ(NamesInFolder().size(), 3u);
}

TEST_F(CatalogueReaderTest, ChangedBytesNeverDoWorseThanLoseLines) {
    SaveSmallFile();
    const std::string text = Text();
    std::mt19937 random(6);
    for (int i = 0; i < 1500; ++i) {
        std::string changed = text;
        for (unsigned n = 0; n <= random() % 3; ++n) changed[random() % changed.size()] = static_cast<char>(random());
        SetText(changed);
        Load();
        ASSERT_LE(Catalogue().PluginInfoEnd() - Catalogue().PluginInfoBegin(), 3);
        for (const std::string& name : NamesInFolder()) std::filesystem::remove(mFolder.Path(name));
    }
}

TEST_F(CatalogueReaderTest, HostileDocumentsAreBounded) {
    const std::string head = "<audioplugins version=\"1\">\n", tail = "</audioplugins>\n";
    std::string nested, attributes, components, folders, buses;
    for (int i = 0; i < 200000; ++i) nested += "<a>";
    for (int i = 0; i < 200000; ++i) attributes += " a" + std::to_string(i) + "=\"x\"";
    for (int i = 0; i < 6000; ++i) components += "<component parameters=\"99999999999999999999\"/>";
    for (int i = 0; i < 3000; ++i) folders += "<folder path=\"/" + std::to_string(i) + "\"/>";
    for (int i = 0; i < 3000; ++i) buses += "<input channels=\"-7\"/><output channels=\"999999999\"/>";
    SetText(head + nested + "\n<module technology=\"2\" path=\"/a\"" + attributes + "><component>" + buses +
            "</component>" + components + "</module>\n<technology type=\"2\">" + folders + "</technology>\n" + tail);
    EXPECT_EQ(Load(), PluginModuleInfoManager::kRecovered);
    const auto info = Catalogue().FindPluginInfo(Vst("/a"));
    ASSERT_TRUE(info);
    EXPECT_EQ(info->GetComponents().size(), kMaxComponents);
    const PluginComponentInfo& first = info->GetComponents().front();
    EXPECT_EQ(first.inputBuses.size(), PluginComponentInfo::kMaxBuses);
    EXPECT_EQ(first.inputBuses.front().channelCount, 0);
    EXPECT_EQ(first.outputBuses.front().channelCount, PluginComponentInfo::kMaxChannels);
    const auto technology = Catalogue().GetPluginTechnology(kTechnologyVST);
    EXPECT_EQ(technology->DirectoryEnd() - technology->DirectoryBegin(), 1024);
}

TEST_F(CatalogueReaderTest, EntitiesAreNotExpanded) {
    SetText(
        "<?xml version=\"1.0\"?>\n<!DOCTYPE audioplugins [<!ENTITY x SYSTEM \"file:///etc/passwd\">]>\n"
        "<audioplugins version=\"1\">\n<failed technology=\"2\" path=\"/a\" reason=\"&x;\"/>\n</audioplugins>\n");
    Load();
    ASSERT_NE(Catalogue().FailureBegin(), Catalogue().FailureEnd());
    EXPECT_EQ(Narrow(Catalogue().FailureBegin()->reason), "&x;");
}

TEST_F(CatalogueReaderTest, AFileAboveTheLimitIsKeptAsideUnread) {
    SetText("<audioplugins version=\"1\">\n</audioplugins>\n");
    std::filesystem::resize_file(mFolder.Path(kName), (std::uintmax_t(256) << 20) + 1);
    EXPECT_EQ(Load(), PluginModuleInfoManager::kKeptAside);
    EXPECT_EQ(NamesInFolder(), std::vector<std::string>{std::string(kName) + ".unreadable"});
}

TEST_F(CatalogueReaderTest, ElementsOfUnknownNamesAndWindowsLineEndsAreHarmless) {
    SaveSmallFile();
    const std::string state = StateOfCatalogue();
    std::string text = Text(), changed;
    text.insert(text.find("</audioplugins>"), "<rating technology=\"2\" path=\"/a\" stars=\"5\"/>\n");
    for (const char byte : text) changed += byte == '\n' ? std::string("\r\n") : std::string(1, byte);
    SetText(changed);
    EXPECT_EQ(Load(), PluginModuleInfoManager::kLoaded);
    EXPECT_EQ(StateOfCatalogue(), state);
}

TEST_F(CatalogueReaderTest, AFileThatAnEditorHasSetAnewIsLoadedWhole) {
    SaveSmallFile();
    const std::string state = StateOfCatalogue();
    std::string text = Text(), changed = "\xEF\xBB\xBF";
    for (std::size_t i = 0; i < text.size(); ++i) {
        changed += text[i];
        if (text[i] == '>' && i + 1 < text.size() && text[i + 1] == '<') changed += "\n    ";
    }
    SetText(changed);
    EXPECT_EQ(Load(), PluginModuleInfoManager::kLoaded);
    EXPECT_EQ(StateOfCatalogue(), state);
}

}  // namespace
