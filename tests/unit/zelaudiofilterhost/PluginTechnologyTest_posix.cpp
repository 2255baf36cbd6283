#include <sys/stat.h>

#include <filesystem>

#include "PluginTechnologyStage.h"

namespace {

using namespace zelaudiofilterhost;
using namespace zeltests;

class PluginTechnologyPosixTest : public PluginTechnologyTest {
protected:
    void Link(const std::string& target, const std::string& name) const {
        std::filesystem::create_directories(std::filesystem::path(mFolder.Path(name)).parent_path());
        std::filesystem::create_symlink(mFolder.Path(target), mFolder.Path(name));
    }
};

TEST_F(PluginTechnologyPosixTest, DefaultFoldersAreThoseOfVariablesThenTheUsersThenTheSystems) {
    const ScopedVariable home("HOME", "/home/ada"), first("VST_PATH", "/one:relative::/two/"),
        second("LXVST_PATH", "/three"), third("VST3_PATH", "/four");
    EXPECT_EQ(Defaults(kTechnologyVST),
              (Names{"/one", "/two", "/three", "/home/ada/.vst", "/home/ada/.lxvst", "/usr/lib/vst",
                     "/usr/local/lib/vst", "/usr/lib/lxvst", "/usr/local/lib/lxvst"}));
    EXPECT_EQ(Defaults(kTechnologyVST3), (Names{"/four", "/home/ada/.vst3", "/usr/lib/vst3", "/usr/local/lib/vst3"}));
    EXPECT_EQ(Defaults(kTechnologyAU), Names());
}

TEST_F(PluginTechnologyPosixTest, TheSameFolderUnderTwoNamesIsADefaultOnce) {
    std::filesystem::create_directory(mFolder.Path("real"));
    Link("real", "link");
    const std::string variable = mFolder.Path("link") + ":" + mFolder.Path("real") + ":/usr/lib/../lib/vst3";
    const ScopedVariable home("HOME", "/home/ada"), path("VST3_PATH", variable.c_str());
    EXPECT_EQ(Defaults(kTechnologyVST3),
              (Names{mFolder.Path("link"), "/usr/lib/../lib/vst3", "/home/ada/.vst3", "/usr/local/lib/vst3"}));
}

TEST_F(PluginTechnologyPosixTest, AFolderNameThatIsNoTextIsNoDefault) {
    const ScopedVariable home("HOME", "/home/ada"), path("VST3_PATH", "/bad\xFF:/good");
    EXPECT_EQ(Defaults(kTechnologyVST3).front(), "/good");
}

TEST_F(PluginTechnologyPosixTest, OnlyFilesThatEndInSoExactlyAreVstModules) {
    for (const char* name : {"search/a.SO", "search/b.so.1", "search/c.dll", "search/" ZEL_MODULE, "search/so"})
        Touch(name);
    std::filesystem::create_directory(mFolder.Path("search/folder" ZEL_MODULE));
    Touch("search/folder.so/in" ZEL_MODULE);
    EXPECT_EQ(Find(kTechnologyVST), Names{"search/folder.so/in" ZEL_MODULE});
}

TEST_F(PluginTechnologyPosixTest, EachPluginIsFoundOnceByThePathItsLinksLeadTo) {
    Touch("elsewhere/real" ZEL_MODULE);
    Touch("elsewhere/Real.vst3/Contents/x");
    Link("elsewhere/real" ZEL_MODULE, "search/a" ZEL_MODULE);
    Link("elsewhere/real" ZEL_MODULE, "search/b" ZEL_MODULE);
    Link("elsewhere/Real.vst3", "search/Link.vst3");
    Link("elsewhere/Real.vst3", "search/named-otherwise");
    Link("elsewhere", "search/folder");
    EXPECT_EQ(Find(kTechnologyVST), Names{"elsewhere/real" ZEL_MODULE});
    EXPECT_EQ(Find(kTechnologyVST3), Names{"elsewhere/Real.vst3"});
}

TEST_F(PluginTechnologyPosixTest, LinksThatLeadBackOrNowhereAreHarmless) {
    Touch("search/deep/a" ZEL_MODULE);
    Link("search", "search/deep/up");
    Link("search/deep", "search/deep/here");
    Link("search/nothing" ZEL_MODULE, "search/nothing" ZEL_MODULE);
    Link("missing" ZEL_MODULE, "search/missing" ZEL_MODULE);
    EXPECT_EQ(Find(kTechnologyVST), Names{"search/deep/a" ZEL_MODULE});
}

TEST_F(PluginTechnologyPosixTest, APipeOrSocketOfThatNameIsPassedOverWithoutHanging) {
    Touch("search/a" ZEL_MODULE);
    ASSERT_EQ(::mkfifo(mFolder.Path("search/pipe" ZEL_MODULE).c_str(), 0600), 0);
    ASSERT_EQ(::mkfifo(mFolder.Path("search/pipe.vst3").c_str(), 0600), 0);
    Link("search/pipe" ZEL_MODULE, "search/link" ZEL_MODULE);
    EXPECT_EQ(Find(kTechnologyVST), Names{"search/a" ZEL_MODULE});
    EXPECT_EQ(Find(kTechnologyVST3), Names());
}

TEST_F(PluginTechnologyPosixTest, NamesThatAreNoTextArePassedOver) {
    Touch("search/a" ZEL_MODULE);
    Touch("search/bad\xFF" ZEL_MODULE);
    Touch("search/badfolder\xC0\xAF/in" ZEL_MODULE);
    Touch("search/g\xC3\xBCltig" ZEL_MODULE);
    EXPECT_EQ(Find(kTechnologyVST), (Names{"search/a" ZEL_MODULE, "search/g\xC3\xBCltig" ZEL_MODULE}));
}

TEST_F(PluginTechnologyPosixTest, LinksIntoOtherFormatsBundlesAreNoVstModules) {
    Touch("search/Echo.vst3/Contents/" ZEL_BUNDLE_FOLDER "/Echo" ZEL_BUNDLE_MODULE);
    Touch("search/Echo.lv2/Echo" ZEL_MODULE);
    Touch("search/own" ZEL_MODULE);
    Link("search/Echo.vst3/Contents/" ZEL_BUNDLE_FOLDER "/Echo" ZEL_BUNDLE_MODULE, "search/link" ZEL_MODULE);
    Link("search/Echo.lv2", "search/linked-folder");
    EXPECT_EQ(Find(kTechnologyVST), Names{"search/own" ZEL_MODULE});
}

TEST_F(PluginTechnologyPosixTest, AnEndingInCapitalsIsNoBundles) {
    Touch("search/Other.VST3/x");
    EXPECT_EQ(Find(kTechnologyVST3), Names());
}

}  // namespace
