#include <sys/stat.h>

#include <algorithm>
#include <filesystem>

#include "CatalogueTestSupport.h"

namespace {

using namespace zelaudiofilterhost;
using zeltests::Narrow;
using zeltests::ScopedVariable;
using zeltests::U;
using zeltests::WriteFile;

class PluginTechnologyTest : public zeltests::CatalogueTest {
protected:
    std::vector<std::string> Folders(TechnologyType type) const {
        const auto technology = Catalogue().GetPluginTechnology(type);
        std::vector<std::string> folders;
        std::transform(technology->DirectoryBegin(), technology->DirectoryEnd(), std::back_inserter(folders), Narrow);
        return folders;
    }
    std::vector<std::string> Defaults(TechnologyType type) const {
        std::vector<std::string> folders;
        for (const ustring& folder : Catalogue().GetPluginTechnology(type)->GetDefaultDirectories()) {
            folders.push_back(Narrow(folder));
        }
        return folders;
    }
    /// What is found below a folder of this test, as paths relative to the test's folder.
    std::vector<std::string> Find(TechnologyType type, const std::string& name = "search") const {
        std::vector<std::string> found;
        for (const PluginLocator& locator : Catalogue().GetPluginTechnology(type)->FindPlugins(mFolder.UPath(name))) {
            EXPECT_EQ(locator.GetTechnologyType(), type);
            EXPECT_TRUE(locator.GetSubcomponent().empty());
            const std::string path = Narrow(locator.GetPath());
            EXPECT_TRUE(path.starts_with(mFolder.GetPath() + "/")) << path;
            found.push_back(path.substr(mFolder.GetPath().size() + 1));
        }
        return found;
    }
    void Touch(const std::string& name) const {
        std::filesystem::create_directories(std::filesystem::path(mFolder.Path(name)).parent_path());
        WriteFile(mFolder.Path(name), "x");
    }
    void Link(const std::string& target, const std::string& name) const {
        std::filesystem::create_directories(std::filesystem::path(mFolder.Path(name)).parent_path());
        std::filesystem::create_symlink(mFolder.Path(target), mFolder.Path(name));
    }
};

typedef std::vector<std::string> Names;

TEST_F(PluginTechnologyTest, TheTechnologiesAreVstVst3AndAuWithTheirNames) {
    EXPECT_EQ(Narrow(Catalogue().GetPluginTechnology(kTechnologyVST)->GetName()), "VST");
    EXPECT_EQ(Narrow(Catalogue().GetPluginTechnology(kTechnologyVST3)->GetName()), "VST3");
    EXPECT_EQ(Narrow(Catalogue().GetPluginTechnology(kTechnologyAU)->GetName()), "AU");
    EXPECT_EQ(Catalogue().GetPluginTechnology(kTechnologyVST3)->GetType(), kTechnologyVST3);
    EXPECT_FALSE(Catalogue().GetPluginTechnology(kTechnologyBuiltIn));
    EXPECT_FALSE(Catalogue().GetPluginTechnology(kTechnologyNone));
}

TEST_F(PluginTechnologyTest, FoldersAreAppendedOnceAndWithoutSlashAtTheirEnd) {
    const auto technology = Catalogue().GetPluginTechnology(kTechnologyVST);
    technology->AddPluginDirectories({U("/b"), U("/a/"), U("/b/")});
    technology->AddPluginDirectories({U("/a"), U("/c")});
    EXPECT_EQ(Folders(kTechnologyVST), (Names{"/b", "/a", "/c"}));
}

TEST_F(PluginTechnologyTest, RelativeAndEmptyPathsAreIgnored) {
    const auto technology = Catalogue().GetPluginTechnology(kTechnologyVST);
    technology->AddPluginDirectories({U(""), U("vst"), U("./vst"), U("/ok")});
    EXPECT_EQ(Folders(kTechnologyVST), Names{"/ok"});
    technology->SetPluginDirectories({U("vst"), U("/other")});
    EXPECT_EQ(Folders(kTechnologyVST), Names{"/other"});
}

TEST_F(PluginTechnologyTest, TheSignalIsFiredOnceForAChangeAndNotWithoutOne) {
    const auto technology = Catalogue().GetPluginTechnology(kTechnologyVST);
    int fired = 0;
    const boost::signals::scoped_connection connection(
        technology->GetDirectoriesChangedSignal().connect([&fired] { ++fired; }));
    technology->AddPluginDirectories({U("/a"), U("/b")});
    EXPECT_EQ(fired, 1);
    technology->AddPluginDirectories({U("/a"), U("relative")});
    technology->RemovePluginDirectories({U("/nowhere")});
    technology->SetPluginDirectories({U("/a"), U("/b")});
    EXPECT_EQ(fired, 1);
    technology->RemovePluginDirectories({U("/a/"), U("/b")});
    EXPECT_EQ(fired, 2);
    EXPECT_EQ(Folders(kTechnologyVST), Names());
    technology->ResetToDefaultDirectories();
    EXPECT_EQ(fired, 3);
    technology->ResetToDefaultDirectories();
    EXPECT_EQ(fired, 3);
}

TEST_F(PluginTechnologyTest, DefaultFoldersAreThoseOfVariablesThenTheUsersThenTheSystems) {
    const ScopedVariable home("HOME", "/home/ada"), first("VST_PATH", "/one:relative::/two/"),
        second("LXVST_PATH", "/three"), third("VST3_PATH", "/four");
    EXPECT_EQ(Defaults(kTechnologyVST),
              (Names{"/one", "/two", "/three", "/home/ada/.vst", "/home/ada/.lxvst", "/usr/lib/vst",
                     "/usr/local/lib/vst", "/usr/lib/lxvst", "/usr/local/lib/lxvst"}));
    EXPECT_EQ(Defaults(kTechnologyVST3), (Names{"/four", "/home/ada/.vst3", "/usr/lib/vst3", "/usr/local/lib/vst3"}));
    EXPECT_EQ(Defaults(kTechnologyAU), Names());
}

TEST_F(PluginTechnologyTest, TheSameFolderUnderTwoNamesIsADefaultOnce) {
    std::filesystem::create_directory(mFolder.Path("real"));
    Link("real", "link");
    const std::string variable = mFolder.Path("link") + ":" + mFolder.Path("real") + ":/usr/lib/../lib/vst3";
    const ScopedVariable home("HOME", "/home/ada"), path("VST3_PATH", variable.c_str());
    EXPECT_EQ(Defaults(kTechnologyVST3),
              (Names{mFolder.Path("link"), "/usr/lib/../lib/vst3", "/home/ada/.vst3", "/usr/local/lib/vst3"}));
}

TEST_F(PluginTechnologyTest, AFolderNameThatIsNoTextIsNoDefault) {
    const ScopedVariable home("HOME", "/home/ada"), path("VST3_PATH", "/bad\xFF:/good");
    EXPECT_EQ(Defaults(kTechnologyVST3).front(), "/good");
}

TEST_F(PluginTechnologyTest, VstModulesAreFoundRecursivelyInTheOrderOfTheirNames) {
    for (const char* name : {"search/b.so", "search/a/z.so", "search/a.so", "search/c/d/e.so", "search/.hidden/h.so"}) {
        Touch(name);
    }
    EXPECT_EQ(Find(kTechnologyVST),
              (Names{"search/.hidden/h.so", "search/a/z.so", "search/a.so", "search/b.so", "search/c/d/e.so"}));
}

TEST_F(PluginTechnologyTest, OnlyFilesThatEndInSoExactlyAreVstModules) {
    for (const char* name : {"search/a.SO", "search/b.so.1", "search/c.dll", "search/.so", "search/so"}) Touch(name);
    std::filesystem::create_directory(mFolder.Path("search/folder.so"));
    Touch("search/folder.so/in.so");
    EXPECT_EQ(Find(kTechnologyVST), Names{"search/folder.so/in.so"});
}

TEST_F(PluginTechnologyTest, VstModulesInsideOtherFormatsBundlesAreNone) {
    Touch("search/Echo.vst3/Contents/x86_64-linux/Echo.so");
    Touch("search/Echo.lv2/Echo.so");
    Touch("search/own.so");
    Link("search/Echo.vst3/Contents/x86_64-linux/Echo.so", "search/link.so");
    Link("search/Echo.lv2", "search/linked-folder");
    EXPECT_EQ(Find(kTechnologyVST), Names{"search/own.so"});
    EXPECT_EQ(Find(kTechnologyVST, "search/Echo.vst3"), Names());
    EXPECT_EQ(Find(kTechnologyVST, "search/Echo.vst3/Contents"), Names());
}

TEST_F(PluginTechnologyTest, AFolderThatIsCalledOnlyVst3IsSearchedAndNoBundle) {
    Touch(".vst3/Echo.vst3/Contents/x86_64-linux/Echo.so");
    Touch(".vst3/single.so");
    EXPECT_EQ(Find(kTechnologyVST3, ".vst3"), Names{".vst3/Echo.vst3"});
    EXPECT_EQ(Find(kTechnologyVST, ".vst3"), Names{".vst3/single.so"});
}

TEST_F(PluginTechnologyTest, Vst3BundlesAndFilesAreFoundAndBundlesNotSearched) {
    Touch("search/Echo.vst3/Contents/x86_64-linux/Echo.so");
    Touch("search/Echo.vst3/Contents/Inner.vst3");
    Touch("search/vendor/Single.vst3");
    std::filesystem::create_directory(mFolder.Path("search/Empty.vst3"));
    Touch("search/Other.VST3/x");
    EXPECT_EQ(Find(kTechnologyVST3), (Names{"search/Echo.vst3", "search/Empty.vst3", "search/vendor/Single.vst3"}));
}

TEST_F(PluginTechnologyTest, EachPluginIsFoundOnceByThePathItsLinksLeadTo) {
    Touch("elsewhere/real.so");
    Touch("elsewhere/Real.vst3/Contents/x");
    Link("elsewhere/real.so", "search/a.so");
    Link("elsewhere/real.so", "search/b.so");
    Link("elsewhere/Real.vst3", "search/Link.vst3");
    Link("elsewhere/Real.vst3", "search/named-otherwise");
    Link("elsewhere", "search/folder");
    EXPECT_EQ(Find(kTechnologyVST), Names{"elsewhere/real.so"});
    EXPECT_EQ(Find(kTechnologyVST3), Names{"elsewhere/Real.vst3"});
}

TEST_F(PluginTechnologyTest, LinksThatLeadBackOrNowhereAreHarmless) {
    Touch("search/deep/a.so");
    Link("search", "search/deep/up");
    Link("search/deep", "search/deep/here");
    Link("search/nothing.so", "search/nothing.so");
    Link("missing.so", "search/missing.so");
    EXPECT_EQ(Find(kTechnologyVST), Names{"search/deep/a.so"});
}

TEST_F(PluginTechnologyTest, APipeOrSocketOfThatNameIsPassedOverWithoutHanging) {
    Touch("search/a.so");
    ASSERT_EQ(::mkfifo(mFolder.Path("search/pipe.so").c_str(), 0600), 0);
    ASSERT_EQ(::mkfifo(mFolder.Path("search/pipe.vst3").c_str(), 0600), 0);
    Link("search/pipe.so", "search/link.so");
    EXPECT_EQ(Find(kTechnologyVST), Names{"search/a.so"});
    EXPECT_EQ(Find(kTechnologyVST3), Names());
}

TEST_F(PluginTechnologyTest, NamesThatAreNoTextArePassedOver) {
    Touch("search/a.so");
    Touch("search/bad\xFF.so");
    Touch("search/badfolder\xC0\xAF/in.so");
    Touch("search/g\xC3\xBCltig.so");
    EXPECT_EQ(Find(kTechnologyVST), (Names{"search/a.so", "search/g\xC3\xBCltig.so"}));
}

TEST_F(PluginTechnologyTest, TheSearchGoesThirtyTwoFoldersDeepAndNoDeeper) {
    std::string path = "search";
    for (int i = 1; i <= 31; ++i) path += "/d";
    Touch(path + "/reached.so");
    Touch(path + "/d/beyond.so");
    EXPECT_EQ(Find(kTechnologyVST), Names{path + "/reached.so"});
}

TEST_F(PluginTechnologyTest, AMissingARelativeAndAnEmptyFolderHoldNothing) {
    EXPECT_EQ(Find(kTechnologyVST, "missing"), Names());
    const auto technology = Catalogue().GetPluginTechnology(kTechnologyVST);
    EXPECT_TRUE(technology->FindPlugins(ustring()).empty());
    EXPECT_TRUE(technology->FindPlugins(U(".")).empty());
}

TEST_F(PluginTechnologyTest, AudioUnitsAreNotFoundHere) {
    Touch("search/Echo.component/Contents/x");
    EXPECT_EQ(Find(kTechnologyAU), Names());
}

}  // namespace
