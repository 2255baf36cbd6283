#include <atomic>
#include <limits>
#include <thread>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "support/WaitFor.h"
#include "Vst3FilterForTest.h"

using namespace zelaudiofilterhost;
using namespace zeltests;
using testing::Each;
using testing::ElementsAre;

namespace {

constexpr int kFrames = 64;

/// A filter that is started for blocks of kFrames.
boost::intrusive_ptr<AudioFilter> Start(const std::string& name) {
    const auto filter = MakeVst3(name);
    EXPECT_TRUE(filter->StartProcessing(48000, kFrames));
    return filter;
}

void ExpectSilence(AudioFilter& filter, int frames) {
    for (const Samples& output : Process(filter, frames)) EXPECT_THAT(output, Each(0.0f));
}

}  // namespace

TEST(Vst3ProcessorTest, AParameterThatIsSetChangesTheNextBlock) {
    const auto filter = Start("good/ZelMany3");
    filter->SetParameterValue(0, 0.25f);
    EXPECT_THAT(Process(*filter, kFrames),
                ElementsAre(Scaled(Signal(0, kFrames), 0.25f), Scaled(Signal(1, kFrames), 0.25f)));
    filter->SetParameterValue(0, 1.0f);
    EXPECT_THAT(Process(*filter, kFrames), ElementsAre(Signal(0, kFrames), Signal(1, kFrames)));
    // And stays.
    EXPECT_THAT(Process(*filter, 1), ElementsAre(Signal(0, 1), Signal(1, 1)));
}

TEST(Vst3ProcessorTest, OfSeveralChangesBetweenTwoBlocksTheLastCounts) {
    const auto filter = Start("good/ZelMany3");
    for (const float value : {0.125f, 1.0f, 0.0f, 0.75f}) filter->SetParameterValue(0, value);
    EXPECT_EQ(ProcessOnes(*filter), 0.75f);
}

TEST(Vst3ProcessorTest, AllParametersCanChangeWithinOneBlock) {
    const auto filter = Start("good/ZelMany3");
    for (int i = 1999; i >= 0; --i) filter->SetParameterValue(i, 0.375f);
    EXPECT_EQ(ProcessOnes(*filter), 0.375f);
}

TEST(Vst3ProcessorTest, EachOfManyBlocksHasItsChange) {
    const auto filter = Start("good/ZelChanging3");
    for (int i = 1; i <= 200; ++i) {
        filter->SetParameterValue(0, static_cast<float>(i) / 256.0f);
        ASSERT_EQ(ProcessOnes(*filter), static_cast<float>(i) / 256.0f);
    }
}

TEST(Vst3ProcessorTest, AChangeWhileStoppedReachesTheFirstBlock) {
    const auto filter = MakeVst3("good/ZelMany3");
    filter->SetParameterValue(0, 0.25f);
    ASSERT_TRUE(filter->StartProcessing(48000, kFrames));
    EXPECT_EQ(ProcessOnes(*filter), 0.25f);
    filter->StopProcessing();
    filter->SetParameterValue(0, 0.75f);
    EXPECT_EQ(ProcessOnes(*filter), 0.0f);
    ASSERT_TRUE(filter->StartProcessing(48000, kFrames));
    EXPECT_EQ(ProcessOnes(*filter), 0.75f);
}

TEST(Vst3ProcessorTest, AComponentThatIsItsOwnControllerGetsItsChangesToo) {
    const auto filter = Start("good/ZelChanging3");
    filter->SetParameterValue(0, 0.75f);
    EXPECT_EQ(ProcessOnes(*filter), 0.75f);
    filter->SetParameterValue(0, 0.125f);
    EXPECT_EQ(ProcessOnes(*filter), 0.125f);
}

TEST(Vst3ProcessorTest, ChannelsAreCountedAcrossAllBusesInTheirOrder) {
    const auto filter = Start("good/ZelSideChain3");
    EXPECT_EQ(filter->GetEffectChannelCount(AudioFilter::kInput), 3);
    EXPECT_EQ(filter->GetEffectChannelCount(AudioFilter::kOutput), 2);
    // The third input is the side-chain: as loud as that is, the others get quieter.
    const float left = 0.5f;
    const float right = -0.25f;
    const float side = 0.75f;
    const float* const inputs[] = {&left, &right, &side};
    float outputs[2] = {9.0f, 9.0f};
    float* const outputPointers[] = {&outputs[0], &outputs[1]};
    filter->ProcessEffect(inputs, outputPointers, 1);
    EXPECT_THAT(outputs, ElementsAre(0.125f, -0.0625f));
}

TEST(Vst3ProcessorTest, ChannelsBeyondTheMostThatThereMayBeAreLeftOut) {
    const auto filter = Start("bad/TooManyChannels3");
    EXPECT_EQ(filter->GetEffectChannelCount(AudioFilter::kInput), PluginComponentInfo::kMaxChannels);
    EXPECT_THAT(Process(*filter, kFrames), ElementsAre(Signal(0, kFrames), Signal(1, kFrames)));
    // Inputs of 4 GiB.
    EXPECT_FALSE(filter->StartProcessing(48000, 1 << 20));
}

TEST(Vst3ProcessorTest, AnInstrumentHasNoInputsAndSounds) {
    const auto filter = Start("good/ZelSynth3");
    EXPECT_EQ(filter->GetEffectChannelCount(AudioFilter::kInput), 0);
    const std::vector<Samples> outputs = Process(*filter, kFrames);
    ASSERT_EQ(outputs.size(), 2u);
    EXPECT_GT(outputs[0][8], 0.1f);
}

TEST(Vst3ProcessorTest, InputsStayAsTheyAreWhenThePluginWorksInThem) {
    // Process looks at the inputs afterwards.
    const auto filter = Start("good/ZelPlain3");
    EXPECT_THAT(Process(*filter, kFrames),
                ElementsAre(Scaled(Signal(0, kFrames), -1.0f), Scaled(Signal(1, kFrames), -1.0f)));
}

TEST(Vst3ProcessorTest, AnOutputThatIsFlaggedAsSilentIs) {
    const auto filter = Start("good/ZelPlain3");
    const Samples silence(kFrames, 0.0f);
    const float* const inputs[] = {silence.data(), silence.data()};
    Samples left(kFrames, 9.0f);
    Samples right(kFrames, 9.0f);
    float* const outputs[] = {left.data(), right.data()};
    filter->ProcessEffect(inputs, outputs, kFrames);
    EXPECT_THAT(left, Each(0.0f));
    EXPECT_THAT(right, Each(0.0f));
}

TEST(Vst3ProcessorTest, AnOutputThatThePluginLeavesOutIsSilent) {
    const auto filter = Start("good/ZelMeter3");
    EXPECT_THAT(Process(*filter, kFrames), ElementsAre(Signal(0, kFrames), Signal(1, kFrames), Samples(kFrames, 0.0f)));
}

TEST(Vst3ProcessorTest, WhileStoppedTheOutputsAreSilent) {
    const auto filter = MakeVst3("good/ZelGain3");
    ExpectSilence(*filter, kFrames);
    ASSERT_TRUE(filter->StartProcessing(48000, kFrames));
    EXPECT_THAT(Process(*filter, kFrames), ElementsAre(Signal(0, kFrames), Signal(1, kFrames)));
    filter->StopProcessing();
    filter->StopProcessing();
    ExpectSilence(*filter, kFrames);
}

TEST(Vst3ProcessorTest, MoreFramesThanAnnouncedAreSilentAndNoneAreHarmless) {
    const auto filter = Start("good/ZelGain3");
    ExpectSilence(*filter, kFrames + 1);
    Process(*filter, 0);
    filter->ProcessEffect(nullptr, nullptr, -1);
    EXPECT_THAT(Process(*filter, kFrames), ElementsAre(Signal(0, kFrames), Signal(1, kFrames)));
}

TEST(Vst3ProcessorTest, APluginThatFailsWithTheSoundIsSilent) {
    const auto filter = Start("bad/ThrowsWhenProcessing3");
    filter->SetParameterValue(0, 0.25f);
    ExpectSilence(*filter, kFrames);
    filter->SetParameterValue(0, 0.75f);
    ExpectSilence(*filter, kFrames);
}

TEST(Vst3ProcessorTest, StartingHasBounds) {
    const auto filter = MakeVst3("good/ZelGain3");
    for (const double rate : {0.0, 0.5, -48000.0, 10'000'001.0, std::numeric_limits<double>::infinity(),
                              std::numeric_limits<double>::quiet_NaN()}) {
        EXPECT_FALSE(filter->StartProcessing(rate, kFrames)) << rate;
    }
    for (const int frames : {0, -1, (1 << 20) + 1, std::numeric_limits<int>::max()}) {
        EXPECT_FALSE(filter->StartProcessing(48000, frames)) << frames;
    }
    EXPECT_TRUE(filter->StartProcessing(1, 1));
    EXPECT_TRUE(filter->StartProcessing(10'000'000, 1 << 20));
}

TEST(Vst3ProcessorTest, AStartThatIsRefusedLeavesTheFilterStopped) {
    const auto filter = Start("good/ZelPlain3");
    EXPECT_FALSE(filter->StartProcessing(4000, kFrames));
    ExpectSilence(*filter, kFrames);
    EXPECT_TRUE(filter->StartProcessing(96000, kFrames));
    EXPECT_EQ(ProcessOnes(*filter), -1.0f);
    EXPECT_FALSE(filter->StartProcessing(96000, 0));
    ExpectSilence(*filter, kFrames);
}

TEST(Vst3ProcessorTest, StartingAgainStartsOverWithTheNewNumbers) {
    const auto filter = Start("good/ZelMany3");
    filter->SetParameterValue(0, 0.25f);
    ASSERT_TRUE(filter->StartProcessing(96000, 2 * kFrames));
    EXPECT_THAT(Process(*filter, 2 * kFrames),
                ElementsAre(Scaled(Signal(0, 2 * kFrames), 0.25f), Scaled(Signal(1, 2 * kFrames), 0.25f)));
}

TEST(Vst3ProcessorTest, TwoFiltersOfAPluginAreIndependent) {
    const auto first = Start("good/ZelMany3");
    const auto second = Start("good/ZelMany3");
    first->SetParameterValue(0, 0.25f);
    second->SetParameterValue(0, 1.0f);
    EXPECT_EQ(ProcessOnes(*first), 0.25f);
    EXPECT_EQ(ProcessOnes(*second), 1.0f);
    EXPECT_EQ(first->GetParameterValue(0), 0.25f);
}

TEST(Vst3ProcessorTest, ParametersAreSetWhileAnotherThreadProcesses) {
    const auto filter = Start("good/ZelMany3");
    std::atomic<bool> ends{false};
    std::atomic<int> blocks{0};
    std::thread sound([&] {
        float last = 0.5f;
        while (!ends) {
            // Values only rise, so a block with a lower one would have a value that came too late.
            const float now = ProcessOnes(*filter);
            EXPECT_GE(now, last);
            last = now;
            ++blocks;
        }
    });
    for (int i = 1; i <= 1000; ++i) {
        filter->SetParameterValue(0, 0.5f + static_cast<float>(i) / 2048.0f);
        filter->SetParameterValue(i, 0.75f);
        filter->GetParameterValue(i);
    }
    const int before = blocks;
    EXPECT_TRUE(WaitFor([&] { return blocks > before + 1; }));
    ends = true;
    sound.join();
    EXPECT_EQ(ProcessOnes(*filter), 0.5f + 1000.0f / 2048.0f);
}

TEST(Vst3ProcessorTest, AMeterIsReadWhileAnotherThreadProcesses) {
    const auto filter = Start("good/ZelMeter3");
    std::atomic<bool> ends{false};
    std::thread sound([&] {
        while (!ends) ProcessOnes(*filter);
    });
    EXPECT_TRUE(WaitFor([&] { return filter->GetParameterValue(1) == 1.0f; }));
    ends = true;
    sound.join();
}
