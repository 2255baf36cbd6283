#include <filesystem>

#include <ChainEffect.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "SessionStage.h"

using namespace tessaly;
using namespace zelaudiofilterhost;
using namespace zeltests;

TEST(ChainEffectPosixTest, ALinkInThePluginFoldersIsNoReasonToLoadWhatLiesElsewhere) {
    const ThrowAwayFolder folder;
    const SearchFolders folders({folder.GetPath()});
    const ThrowAwayFolder elsewhere;
    const std::string path = elsewhere.Path("gain.so");
    std::filesystem::copy_file(TestPlugin("vst/good/zel_gain.so"), path);
    std::filesystem::create_symlink(path, folder.Path("link.so"));
    EffectRecord record = ChainEffect(*ReadDescriptor(path)).MakeRecord();
    record.locator = PluginLocator(kTechnologyVST, UText(folder.Path("link.so")));
    const ChainEffect effect(record);
    EXPECT_THAT(Text(effect.GetTrouble()), testing::HasSubstr("is neither in the list of plug-ins"));
    EXPECT_EQ(effect.MakeRecord(), record);
}
