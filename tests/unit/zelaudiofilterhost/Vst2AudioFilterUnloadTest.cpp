#include <gtest/gtest.h>

#include "DescribeForTest.h"
#include "LoadedModule.h"
#include "Vst2FilterForTest.h"

using namespace zelaudiofilterhost;
using namespace zeltests;

TEST(Vst2AudioFilterUnloadTest, TheModuleIsLoadedAsLongAsOneFilterLives) {
    const std::string path = TestPlugin("vst/good/zel_gain" ZEL_MODULE);
    const auto descriptors = ReadVst("good/zel_gain");
    EXPECT_FALSE(IsLoaded(path));
    boost::intrusive_ptr<AudioFilter> first = descriptors[0]->CreateFilter();
    boost::intrusive_ptr<AudioFilter> second = descriptors[0]->CreateFilter();
    first.reset();
    EXPECT_TRUE(IsLoaded(path));
    EXPECT_EQ(second->GetParameterValue(0), 0.5f);
    second.reset();
    EXPECT_FALSE(IsLoaded(path));
}

TEST(Vst2AudioFilterUnloadTest, AThousandFiltersLeaveNothingLoaded) {
    const auto descriptors = ReadVst("good/zel_gain");
    for (int i = 0; i < 1000; ++i) {
        const boost::intrusive_ptr<AudioFilter> filter = descriptors[0]->CreateFilter();
        ASSERT_TRUE(filter->StartProcessing(48000, 64));
        Process(*filter, 64);
    }
    EXPECT_FALSE(IsLoaded(TestPlugin("vst/good/zel_gain" ZEL_MODULE)));
}

TEST(Vst2AudioFilterUnloadTest, AFilterThatCouldNotBeMadeLeavesNothingLoaded) {
    const auto gain = ReadVst("good/zel_gain");
    PluginComponentInfo component = gain[0]->GetComponent();
    ++component.uniqueId;
    const boost::intrusive_ptr<AudioFilterDescriptor> other(
        new AudioFilterDescriptor(gain[0]->GetLocator(), component));
    EXPECT_ANY_THROW(other->CreateFilter());
    EXPECT_FALSE(IsLoaded(TestPlugin("vst/good/zel_gain" ZEL_MODULE)));
}
