#include <filesystem>

#include "PluginTechnologyStage.h"

namespace {

using namespace zelaudiofilterhost;
using namespace zeltests;

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

TEST_F(PluginTechnologyTest, VstModulesAreFoundRecursivelyInTheOrderOfTheirNames) {
    for (const char* name : {"search/b" ZEL_MODULE, "search/a/z" ZEL_MODULE, "search/a" ZEL_MODULE,
                             "search/c/d/e" ZEL_MODULE, "search/.hidden/h" ZEL_MODULE}) {
        Touch(name);
    }
    EXPECT_EQ(Find(kTechnologyVST), (Names{"search/.hidden/h" ZEL_MODULE, "search/a/z" ZEL_MODULE,
                                           "search/a" ZEL_MODULE, "search/b" ZEL_MODULE, "search/c/d/e" ZEL_MODULE}));
}

TEST_F(PluginTechnologyTest, VstModulesInsideOtherFormatsBundlesAreNone) {
    Touch("search/Echo.vst3/Contents/" ZEL_BUNDLE_FOLDER "/Echo" ZEL_BUNDLE_MODULE);
    Touch("search/Echo.lv2/Echo" ZEL_MODULE);
    Touch("search/own" ZEL_MODULE);
    EXPECT_EQ(Find(kTechnologyVST), Names{"search/own" ZEL_MODULE});
    EXPECT_EQ(Find(kTechnologyVST, "search/Echo.vst3"), Names());
    EXPECT_EQ(Find(kTechnologyVST, "search/Echo.vst3/Contents"), Names());
}

TEST_F(PluginTechnologyTest, AFolderThatIsCalledOnlyVst3IsSearchedAndNoBundle) {
    Touch(".vst3/Echo.vst3/Contents/" ZEL_BUNDLE_FOLDER "/Echo" ZEL_BUNDLE_MODULE);
    Touch(".vst3/single" ZEL_MODULE);
    EXPECT_EQ(Find(kTechnologyVST3, ".vst3"), Names{".vst3/Echo.vst3"});
    EXPECT_EQ(Find(kTechnologyVST, ".vst3"), Names{".vst3/single" ZEL_MODULE});
}

TEST_F(PluginTechnologyTest, Vst3BundlesAndFilesAreFoundAndBundlesNotSearched) {
    Touch("search/Echo.vst3/Contents/" ZEL_BUNDLE_FOLDER "/Echo" ZEL_BUNDLE_MODULE);
    Touch("search/Echo.vst3/Contents/Inner.vst3");
    Touch("search/vendor/Single.vst3");
    std::filesystem::create_directory(mFolder.Path("search/Empty.vst3"));
    EXPECT_EQ(Find(kTechnologyVST3), (Names{"search/Echo.vst3", "search/Empty.vst3", "search/vendor/Single.vst3"}));
}

TEST_F(PluginTechnologyTest, TheSearchGoesThirtyTwoFoldersDeepAndNoDeeper) {
    std::string path = "search";
    for (int i = 1; i <= 31; ++i) path += "/d";
    Touch(path + "/reached" ZEL_MODULE);
    Touch(path + "/d/beyond" ZEL_MODULE);
    EXPECT_EQ(Find(kTechnologyVST), Names{path + "/reached" ZEL_MODULE});
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
