#include <dlfcn.h>

#include <gtest/gtest.h>

#include "DescribeForTest.h"
#include "Vst3FilterForTest.h"

using namespace zelaudiofilterhost;
using namespace zeltests;

namespace {

bool IsLoaded(const std::string& name) {
    const std::string path = TestPlugin("vst3/good/" + name + ".vst3/Contents/x86_64-linux/" + name + ".so");
    void* const handle = dlopen(path.c_str(), RTLD_NOW | RTLD_NOLOAD);
    if (handle != nullptr) dlclose(handle);
    return handle != nullptr;
}

}  // namespace

TEST(Vst3AudioFilterUnloadTest, TheModuleIsLoadedAsLongAsOneFilterLives) {
    auto first = MakeVst3("good/ZelGain3");
    auto second = MakeVst3("good/ZelGain3");
    first.reset();
    EXPECT_TRUE(IsLoaded("ZelGain3"));
    EXPECT_EQ(second->GetParameterValue(0), 0.5f);
    second.reset();
    EXPECT_FALSE(IsLoaded("ZelGain3"));
}

TEST(Vst3AudioFilterUnloadTest, TwoHundredFiltersLeaveNothingLoaded) {
    for (const std::string name : {"ZelGain3", "ZelChanging3", "ZelMany3"}) {
        const auto descriptors = ReadVst3(TestPlugin("vst3/good/" + name + ".vst3"));
        EXPECT_FALSE(IsLoaded(name));
        for (int i = 0; i < 200; ++i) {
            const auto filter = descriptors.at(0)->CreateFilter();
            ASSERT_TRUE(filter->StartProcessing(48000, 64));
            Process(*filter, 64);
            EXPECT_TRUE(IsLoaded(name));
        }
        EXPECT_FALSE(IsLoaded(name));
    }
}
