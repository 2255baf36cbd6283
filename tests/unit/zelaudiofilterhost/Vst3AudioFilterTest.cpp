#include <cmath>
#include <filesystem>

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <zelaudiofilterhost/PluginDescription.h>
#include <zelcore/Utf.h>

#include "DescribeForTest.h"
#include "support/InstalledPlugins.h"
#include "Vst3FilterForTest.h"

using namespace zelaudiofilterhost;
using namespace zeltests;

namespace {

/// What making a filter of another component in that module throws.
std::string ReasonOf(const std::string& path, const PluginComponentInfo& component) {
    const boost::intrusive_ptr<AudioFilterDescriptor> descriptor(
        new AudioFilterDescriptor(PluginLocator(kTechnologyVST3, zelcore::utility::UTF8to16(path)), component));
    try {
        descriptor->CreateFilter();
        return "made";
    } catch (const PluginLoadError& error) {
        return error.what();
    }
}

/// Each sample finite and within what an effect makes of signals below 1.
void ExpectSensible(const std::vector<Samples>& outputs) {
    for (const Samples& output : outputs) {
        for (const float sample : output) ASSERT_LT(std::abs(sample), 1000.0f);
    }
}

}  // namespace

TEST(Vst3AudioFilterTest, EveryGoodPluginIsMadeStartedAndProcesses) {
    std::size_t count = 0;
    for (const auto& entry : std::filesystem::directory_iterator(TestPlugin("vst3/good"))) {
        for (const auto& descriptor : ReadVst3(entry.path().string())) {
            const auto filter = descriptor->CreateFilter();
            EXPECT_EQ(filter->GetComponentID(), descriptor->GetComponent().componentId);
            EXPECT_EQ(filter->GetName(), descriptor->GetComponent().name);
            EXPECT_TRUE(filter->StartProcessing(48000, 64));
            ExpectSensible(Process(*filter, 64));
            ++count;
        }
    }
    EXPECT_GE(count, 14u);
}

TEST(Vst3AudioFilterTest, EachClassOfAModuleIsMadeByItsId) {
    const auto descriptors = ReadVst3(TestPlugin("vst3/good/ZelSeveral3.vst3"));
    ASSERT_EQ(descriptors.size(), 3u);
    EXPECT_EQ(descriptors[0]->CreateFilter()->GetParameterCount(), 0);
    const auto second = descriptors[1]->CreateFilter();
    EXPECT_EQ(Text(second->GetName()), "Several Second");
    EXPECT_EQ(Text(second->GetParameterInfo(0)->GetName()), "Time");
    EXPECT_EQ(descriptors[2]->CreateFilter()->GetEffectChannelCount(AudioFilter::kInput), 0);
}

TEST(Vst3AudioFilterTest, AFilterThatCannotBeMadeSaysWhy) {
    const std::string gain = TestPlugin("vst3/good/ZelGain3.vst3");
    PluginComponentInfo component = ReadVst3(gain)[0]->GetComponent();
    EXPECT_EQ(ReasonOf(TestPlugin("vst3/bad/Throws3.vst3"), component), "does not contain this component any more");
    EXPECT_EQ(ReasonOf(TestPlugin("notplugins/NotThere.vst3"), component), "there is no such file");
    component.componentId.pop_back();
    EXPECT_EQ(ReasonOf(gain, component), "does not contain this component any more");
    component.componentId.clear();
    EXPECT_EQ(ReasonOf(gain, component), "does not contain this component any more");
}

TEST(Vst3AudioFilterTest, PluginsThatDoNotOpenSayWhy) {
    const auto make = [](const char* name, const char* id) {
        PluginComponentInfo component;
        component.componentId = zelcore::utility::UTF8to16(std::string("VST3-5A656C205465737420506C7567696E") + id);
        return ReasonOf(TestPlugin(std::string("vst3/bad/") + name + ".vst3"), component);
    };
    EXPECT_EQ(make("Throws3", "19"), "threw an exception when it was opened: no sound today");
    EXPECT_EQ(make("Empty3", "19"), "does not contain this component any more");
}

TEST(Vst3AudioFilterTest, AFilterMayGoWhileItIsStarted) {
    auto filter = MakeVst3("good/ZelGain3");
    ASSERT_TRUE(filter->StartProcessing(48000, 64));
    Process(*filter, 64);
    filter.reset();
    EXPECT_EQ(MakeVst3("good/ZelGain3")->GetParameterCount(), 2);
}

TEST(Vst3AudioFilterTest, NonsenseIsCutToWhatMakesSense) {
    const auto filter = MakeVst3("bad/Nonsense3");
    EXPECT_EQ(filter->GetParameterCount(), PluginComponentInfo::kMaxParameters);
    EXPECT_EQ(filter->GetEffectChannelCount(AudioFilter::kInput), PluginComponentInfo::kMaxChannels);
    EXPECT_EQ(filter->GetEffectChannelCount(AudioFilter::kOutput), 0);
    EXPECT_FALSE(filter->StartProcessing(48000, 1 << 20));
}

TEST(Vst3AudioFilterTest, AnEffectOfTheSystemMakesSound) {
    const std::string path = "/usr/lib/vst3/ZamDelay.vst3";
    if (!FindInstalledPlugins().contains(path)) GTEST_SKIP() << "the package zam-plugins is not installed";
    const auto filter = ReadVst3(path).at(0)->CreateFilter();
    ASSERT_GT(filter->GetParameterCount(), 0);
    ASSERT_TRUE(filter->StartProcessing(48000, 512));
    bool sounds = false;
    for (int block = 0; block < 100; ++block) {
        const std::vector<Samples> outputs = Process(*filter, 512);
        ExpectSensible(outputs);
        for (const float sample : outputs.at(0)) sounds = sounds || sample != 0.0f;
    }
    EXPECT_TRUE(sounds);
    int mix = 0;
    while (mix < filter->GetParameterCount() && Text(filter->GetParameterInfo(mix)->GetName()) != "Dry/Wet") ++mix;
    ASSERT_LT(mix, filter->GetParameterCount());
    filter->SetParameterValue(mix, 0.25f);
    Process(*filter, 512);
    EXPECT_EQ(filter->GetParameterValue(mix), 0.25f);
    EXPECT_EQ(Text(filter->GetParameterValueString(mix)), "0.250000");
}

TEST(Vst3AudioFilterTest, EveryEffectOfTheSystemProcesses) {
    std::size_t count = 0;
    for (const std::string& path : FindInstalledPlugins()) {
        // Those of zam-plugins: what else somebody has installed is not ours to judge.
        if (!path.starts_with("/usr/lib/vst3/Za")) continue;
        const std::string name = std::filesystem::path(path).stem().string();
        // These two leave their Fourier transforms behind when they are unloaded; a leak detector would blame us.
        if (name == "ZamHeadX2" || name == "ZamVerb") continue;
        const auto filter = ReadVst3(path).at(0)->CreateFilter();
        EXPECT_TRUE(filter->StartProcessing(48000, 256)) << path;
        for (int i = 0; i < filter->GetParameterCount(); ++i) filter->SetParameterValue(i, 0.25f);
        for (int block = 0; block < 4; ++block) Process(*filter, 256);
        ++count;
    }
    if (count == 0) GTEST_SKIP() << "the package zam-plugins is not installed";
}
