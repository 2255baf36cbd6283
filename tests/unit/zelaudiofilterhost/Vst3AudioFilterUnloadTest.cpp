#include <gtest/gtest.h>

#include "DescribeForTest.h"
#include "LoadedModule.h"
#include "Vst3FilterForTest.h"

using namespace zelaudiofilterhost;
using namespace zeltests;

namespace {

bool IsModuleLoaded(const std::string& name) {
    return IsLoaded(
        TestPlugin("vst3/good/" + name + ".vst3/Contents/" ZEL_BUNDLE_FOLDER "/" + name + ZEL_BUNDLE_MODULE));
}

}  // namespace

TEST(Vst3AudioFilterUnloadTest, TheModuleIsLoadedAsLongAsOneFilterLives) {
    auto first = MakeVst3("good/ZelGain3");
    auto second = MakeVst3("good/ZelGain3");
    first.reset();
    EXPECT_TRUE(IsModuleLoaded("ZelGain3"));
    EXPECT_EQ(second->GetParameterValue(0), 0.5f);
    second.reset();
    EXPECT_FALSE(IsModuleLoaded("ZelGain3"));
}

TEST(Vst3AudioFilterUnloadTest, TwoHundredFiltersLeaveNothingLoaded) {
    for (const std::string name : {"ZelGain3", "ZelChanging3", "ZelMany3"}) {
        const auto descriptors = ReadVst3(TestPlugin("vst3/good/" + name + ".vst3"));
        EXPECT_FALSE(IsModuleLoaded(name));
        for (int i = 0; i < 200; ++i) {
            const auto filter = descriptors.at(0)->CreateFilter();
            ASSERT_TRUE(filter->StartProcessing(48000, 64));
            Process(*filter, 64);
            EXPECT_TRUE(IsModuleLoaded(name));
        }
        EXPECT_FALSE(IsModuleLoaded(name));
    }
}
