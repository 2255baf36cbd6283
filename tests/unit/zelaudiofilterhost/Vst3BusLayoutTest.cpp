#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <zelaudiofilterhost/PluginComponentInfo.h>

#include "BusesForTest.h"
#include "DescribeForTest.h"
#include "Vst3FilterForTest.h"

using namespace zelaudiofilterhost;
using namespace zeltests;
using testing::ElementsAre;
using testing::IsEmpty;

namespace {

typedef boost::intrusive_ptr<AudioFilter> Filter;

constexpr int kFrames = 16;
const AudioFilterBusDescription kNoSideChain;

Filter MakeOf(const std::string& name, std::size_t component) {
    return ReadVst3(TestPlugin("vst3/" + name + ".vst3")).at(component)->CreateFilter();
}

std::vector<std::string> Inputs(const Filter& filter) { return BusTexts(*filter, AudioFilter::kInput); }
std::vector<std::string> Outputs(const Filter& filter) { return BusTexts(*filter, AudioFilter::kOutput); }

/// That it starts, and passes sound through from input to output of the same number, as far as there is an input.
void ExpectPassesThrough(const Filter& filter) {
    ASSERT_TRUE(filter->StartProcessing(48000, kFrames));
    const std::vector<Samples> outputs = Process(*filter, kFrames);
    const int inputCount = filter->GetEffectChannelCount(AudioFilter::kInput);
    ASSERT_EQ(outputs.size(), static_cast<std::size_t>(filter->GetEffectChannelCount(AudioFilter::kOutput)));
    for (int i = 0; i < static_cast<int>(outputs.size()); ++i) {
        EXPECT_EQ(outputs[static_cast<std::size_t>(i)], i < inputCount ? Signal(i, kFrames) : Samples(kFrames, 0.0f));
    }
}

}  // namespace

TEST(Vst3BusLayoutTest, BusesHaveTheirNamesKindsAndChannelsInThePluginsOrder) {
    const Filter filter = MakeOf("good/ZelBuses3", 0);
    EXPECT_THAT(Inputs(filter), ElementsAre("Program: L R", "Key (aux): M", ": M", " (aux): L R"));
    EXPECT_THAT(Outputs(filter), ElementsAre("Program: L R", "Monitor (aux): M", ": L R"));
    EXPECT_EQ(filter->GetEffectChannelCount(AudioFilter::kInput), 6);
    EXPECT_EQ(filter->GetEffectChannelCount(AudioFilter::kOutput), 5);
    ExpectPassesThrough(filter);
}

TEST(Vst3BusLayoutTest, AnEffectMayHaveNoBuses) {
    const Filter filter = MakeOf("good/ZelBuses3", 1);
    EXPECT_THAT(Inputs(filter), IsEmpty());
    EXPECT_THAT(Outputs(filter), IsEmpty());
    ExpectPassesThrough(filter);
    EXPECT_TRUE(filter->SetTargetFormat(Layout("stereo"), kNoSideChain));
    EXPECT_THAT(filter->GetChannelMap(AudioFilter::kInput), IsEmpty());
}

TEST(Vst3BusLayoutTest, SixtyFourChannelsWithoutSpeakersAreDiscrete) {
    const Filter filter = MakeOf("good/ZelBuses3", 2);
    EXPECT_EQ(Inputs(filter), std::vector<std::string>{"In: " + Signs(Layout("64"))});
    EXPECT_EQ(Outputs(filter), std::vector<std::string>{"Out: " + Signs(Layout("64"))});
    ExpectPassesThrough(filter);
}

TEST(Vst3BusLayoutTest, ABusHasTheChannelsThatAreCountedAndOtherwiseArrangedOnesAreDiscrete) {
    const Filter filter = MakeOf("good/ZelBuses3", 4);
    EXPECT_THAT(Inputs(filter), ElementsAre("More: - - -", "Fewer: -", "Unsaid: L R", "None: "));
    ExpectPassesThrough(filter);
}

TEST(Vst3BusLayoutTest, AnEffectThatDoesNotSayItsSpeakersHasTheUsualOnes) {
    const Filter filter = MakeVst3("bad/TooManyChannels3");
    EXPECT_THAT(Outputs(filter), ElementsAre("Output: L R"));
    // More than there may be in all: the second bus gets what the first has left.
    AudioFilterBusList inputs;
    AudioFilterBusList outputs;
    filter->GetBusConfiguration(inputs, outputs);
    ASSERT_EQ(inputs.size(), 3u);
    EXPECT_EQ(inputs[0].GetLayout().size(), 1000u);
    EXPECT_EQ(inputs[1].GetLayout().size(), 24u);
    EXPECT_EQ(inputs[2].GetLayout().size(), 0u);
    ExpectPassesThrough(filter);
}

TEST(Vst3BusLayoutTest, NonsenseIsBounded) {
    const Filter filter = MakeVst3("bad/Nonsense3");
    AudioFilterBusList inputs;
    AudioFilterBusList outputs;
    filter->GetBusConfiguration(inputs, outputs);
    EXPECT_LE(inputs.size(), PluginComponentInfo::kMaxBuses);
    EXPECT_LE(outputs.size(), PluginComponentInfo::kMaxBuses);
    for (const AudioFilterBusDescription& bus : inputs) {
        EXPECT_LE(bus.GetName().size(), PluginComponentInfo::kMaxTextLength);
    }
    EXPECT_EQ(filter->GetEffectChannelCount(AudioFilter::kInput), PluginComponentInfo::kMaxChannels);
}

TEST(Vst3BusLayoutTest, AnEffectTakesTheTracksLayoutAndKeepsItsKey) {
    const Filter filter = MakeOf("good/ZelSurround3", 0);
    EXPECT_THAT(Inputs(filter), ElementsAre("Input: L R", "Key (aux): M"));
    for (const char* name : {"5.1", "7.1.4", "mono", "stereo"}) {
        ASSERT_TRUE(filter->SetTargetFormat(Layout(name), kNoSideChain));
        EXPECT_EQ(filter->GetEffectChannelCount(AudioFilter::kOutput), static_cast<int>(Layout(name).size())) << name;
        EXPECT_EQ(filter->GetEffectChannelCount(AudioFilter::kInput), static_cast<int>(Layout(name).size()) + 1);
        EXPECT_EQ(Inputs(filter)[1], "Key (aux): M");
        ASSERT_TRUE(filter->StartProcessing(48000, kFrames)) << name;
        EXPECT_EQ(Process(*filter, kFrames)[0], Signal(0, kFrames));
    }
}

TEST(Vst3BusLayoutTest, ATrackOfSevenAndOneIsConnectedByLabelAcrossBothOrders) {
    const Filter filter = MakeOf("good/ZelSurround3", 0);
    ASSERT_TRUE(filter->StartProcessing(48000, kFrames));
    ASSERT_TRUE(filter->SetTargetFormat(Layout("7.1"), kNoSideChain));
    EXPECT_EQ(MapText(filter->GetChannelMap(AudioFilter::kInput)), "0 1 2 3 6 7 4 5 -");
    EXPECT_EQ(MapText(filter->GetChannelMap(AudioFilter::kOutput)), "0 1 2 3 6 7 4 5");
    // Each effect channel is half as loud as the one before.
    std::vector<Samples> track(8, Samples(kFrames, 1.0f));
    std::vector<float*> channels;
    for (Samples& channel : track) channels.push_back(channel.data());
    filter->Process(channels.data(), channels.data(), kFrames);
    std::vector<float> levels;
    for (const Samples& channel : track) levels.push_back(1.0f / channel.back());
    EXPECT_THAT(levels, ElementsAre(1.0f, 2.0f, 4.0f, 8.0f, 64.0f, 128.0f, 16.0f, 32.0f));
}

TEST(Vst3BusLayoutTest, AnEffectThatTakesItForOneBusOnlyIsAskedForThat) {
    const Filter filter = MakeOf("good/ZelSurround3", 1);
    ASSERT_TRUE(filter->SetTargetFormat(Layout("5.1"), kNoSideChain));
    EXPECT_THAT(Inputs(filter), ElementsAre("Input: L R C Lfe Ls Rs", "Input 2: L R"));
    EXPECT_THAT(Outputs(filter), ElementsAre("Output: L R C Lfe Ls Rs", "Output 2: L R"));
    EXPECT_TRUE(filter->StartProcessing(48000, kFrames));
}

TEST(Vst3BusLayoutTest, AnEffectThatRefusesStaysAsItIs) {
    const Filter filter = MakeVst3("good/ZelSideChain3");
    ASSERT_TRUE(filter->StartProcessing(48000, kFrames));
    ASSERT_TRUE(filter->SetTargetFormat(Layout("5.1"), kNoSideChain));
    EXPECT_THAT(Inputs(filter), ElementsAre("Input: L R", "Side-chain (aux): M"));
    EXPECT_EQ(MapText(filter->GetChannelMap(AudioFilter::kInput)), "0 1 -");
    EXPECT_TRUE(filter->StartProcessing(48000, kFrames));
}

TEST(Vst3BusLayoutTest, WhatAnEffectHasAfterwardsCountsAndNotWhatItSaid) {
    struct Expected {
        const char* inputs;
        const char* outputs;
    };
    constexpr char k51[] = "L R C Lfe Ls Rs";
    const Expected all[] = {{"L R", "L R"}, {"L R", k51}, {k51, k51}, {k51, k51}};
    for (std::size_t i = 0; i < std::size(all); ++i) {
        SCOPED_TRACE(i);
        const Filter filter = MakeOf("bad/LiesAboutBuses3", i);
        ASSERT_TRUE(filter->SetTargetFormat(Layout("5.1"), kNoSideChain));
        EXPECT_THAT(Inputs(filter), ElementsAre(std::string("Input: ") + all[i].inputs));
        EXPECT_THAT(Outputs(filter), ElementsAre(std::string("Output: ") + all[i].outputs));
        ExpectPassesThrough(filter);
    }
}

TEST(Vst3BusLayoutTest, AnEffectThatThrowsFromThenOnKeepsItsBusesAndDoesNotStart) {
    const Filter filter = MakeOf("bad/LiesAboutBuses3", 4);
    ASSERT_TRUE(filter->StartProcessing(48000, kFrames));
    ASSERT_TRUE(filter->SetTargetFormat(Layout("5.1"), kNoSideChain));
    EXPECT_THAT(Inputs(filter), ElementsAre("Input: L R"));
    EXPECT_FALSE(filter->StartProcessing(48000, kFrames));
    for (const Samples& output : Process(*filter, kFrames)) EXPECT_THAT(output, testing::Each(0.0f));
}

TEST(Vst3BusLayoutTest, AnEffectMayWriteIntoWhatItIsAsked) {
    const Filter filter = MakeOf("bad/LiesAboutBuses3", 5);
    ASSERT_TRUE(filter->SetTargetFormat(Layout("5.1"), kNoSideChain));
    EXPECT_THAT(Inputs(filter), ElementsAre("Input: L R"));
    ExpectPassesThrough(filter);
}

TEST(Vst3BusLayoutTest, AnEffectThatIsNeverTheSameKeepsWhatWasReadAndDoesNotStart) {
    const Filter filter = MakeOf("bad/LiesAboutBuses3", 6);
    const int inputs = filter->GetEffectChannelCount(AudioFilter::kInput);
    const int outputs = filter->GetEffectChannelCount(AudioFilter::kOutput);
    EXPECT_EQ(filter->GetEffectChannelCount(AudioFilter::kInput), inputs);
    EXPECT_FALSE(filter->StartProcessing(48000, kFrames));
    EXPECT_EQ(filter->GetEffectChannelCount(AudioFilter::kInput), inputs);
    EXPECT_EQ(filter->GetEffectChannelCount(AudioFilter::kOutput), outputs);
    for (const Samples& output : Process(*filter, kFrames)) EXPECT_THAT(output, testing::Each(0.0f));
}
