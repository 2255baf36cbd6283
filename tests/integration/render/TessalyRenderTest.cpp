#include <cmath>
#include <filesystem>
#include <limits>

#include <gmock/gmock.h>
#include <sndfile.h>

#include "RenderFixture.h"
#include "support/InstalledPlugins.h"

namespace zeltests {

using testing::Each;
using testing::HasSubstr;
using testing::Not;

namespace {

const std::string kPlain = TestPlugin("vst/good/zel_plain" ZEL_MODULE);
const std::string kGain = TestPlugin("vst/good/zel_gain" ZEL_MODULE);
const std::string kSideChain = TestPlugin("vst/good/zel_sidechain" ZEL_MODULE);

/// Loudness of the second half, in which an effect has settled.
double MeasureLoudness(const std::vector<float>& samples) {
    double sum = 0.0;
    const std::size_t begin = samples.size() / 2;
    for (std::size_t i = begin; i < samples.size(); ++i)
        sum += static_cast<double>(samples[i]) * static_cast<double>(samples[i]);
    return std::sqrt(sum / static_cast<double>(samples.size() - begin));
}

}  // namespace

/// What the sound is afterwards.
class TessalyRenderTest : public RenderFixture {};

TEST_F(TessalyRenderTest, AnEffectThatDoesNothingCopiesTheSoundExactly) {
    Sound input = MakeTestSound(2, 10007, 44100);
    input.channels[0][5] = 3.5f;
    input.channels[1][6] = -1e-30f;
    const Sound output = Render(input, {"--effect", kPlain});
    EXPECT_EQ(output.channels, input.channels);
    EXPECT_EQ(output.sampleRate, 44100);
    EXPECT_EQ(output.format, SF_FORMAT_WAV | SF_FORMAT_FLOAT);
}

TEST_F(TessalyRenderTest, TheSizeOfTheBlocksDoesNotMatter) {
    const Sound input = MakeTestSound(2, 1000);
    for (const char* const block : {"1", "7", "1000", "65536"})
        EXPECT_EQ(Render(input, {"--effect", kPlain, "--block", block}).channels, input.channels) << block;
}

TEST_F(TessalyRenderTest, ATailIsWhatTheEffectMakesOfSilence) {
    const Sound output = Render(MakeTestSound(2, 1000), {"--effect", kPlain, "--tail", "0.25"});
    ASSERT_EQ(output.GetFrameCount(), 13000u);
    EXPECT_THAT(std::vector<float>(output[0].begin() + 1000, output[0].end()), Each(0.0f));
}

TEST_F(TessalyRenderTest, AVst3EffectProcessesToo) {
    const Sound input = MakeTestSound(2, 1000);
    const Sound output = Render(input, {"--effect", TestPlugin("vst3/good/ZelPlain3.vst3")});
    for (std::size_t i = 0; i < 1000; ++i) ASSERT_EQ(output[1][i], -input[1][i]);
}

// Maps

TEST_F(TessalyRenderTest, AMapSwapsTheChannels) {
    const Sound input = MakeTestSound(2, 1000);
    const Sound output = Render(input, {"--effect", kPlain, "--map", "in=2,1"});
    EXPECT_EQ(output[0], input[1]);
    EXPECT_EQ(output[1], input[0]);
    EXPECT_EQ(Render(input, {"--effect", kPlain, "--map", "out=2,1"}).channels, output.channels);
}

TEST_F(TessalyRenderTest, SwappedOnTheWayInAndOutTheEffectsLeftIsTheTracksRight) {
    const Sound input = MakeLevel(2, 1000, 0.25f);
    const std::vector<std::string> leftAlone = {"--effect", kGain, "--set", "Balance=0"};
    const Sound straight = Render(input, leftAlone);
    EXPECT_THAT(straight[0], Each(0.25f));
    EXPECT_THAT(straight[1], Each(0.0f));
    const Sound swapped =
        Render(input, {"--effect", kGain, "--set", "Balance=0", "--map", "in=2,1", "--map", "out=2,1"});
    EXPECT_THAT(swapped[0], Each(0.0f));
    EXPECT_THAT(swapped[1], Each(0.25f));
}

TEST_F(TessalyRenderTest, AChannelThatIsNotConnectedReadsSilence) {
    const Sound input = MakeTestSound(2, 1000);
    const Sound output = Render(input, {"--effect", kPlain, "--map", "in=1,-"});
    EXPECT_EQ(output[0], input[0]);
    EXPECT_THAT(output[1], Each(0.0f));
}

TEST_F(TessalyRenderTest, ChannelsThatTheEffectDoesNotHavePassAsTheyAre) {
    const Sound input = MakeTestSound(6, 1000);
    const Sound output = Render(input, {"--effect", kGain, "--set", "Mute=1"});
    EXPECT_THAT(output[0], Each(0.0f));
    EXPECT_EQ(output[2], input[2]);
    EXPECT_EQ(output[5], input[5]);
}

TEST_F(TessalyRenderTest, TheTracksLayoutDecidesWhichChannelsAnEffectGets) {
    const Sound input = MakeTestSound(6, 1000);
    // Six channels without a place of their own: the effect's go by position, whatever they are called.
    WriteSound(mInput, input);
    EXPECT_THAT(Render({"--effect", kGain, "--track", "5.1"}), HasSubstr("Left Surround: "));
    EXPECT_THAT(Render({"--effect", kGain, "--track", "6"}), HasSubstr("Channel 5: "));
}

// Parameters and chains

TEST_F(TessalyRenderTest, TheFilesMayStandBeforeBehindAndBetweenTheOptions) {
    const Sound input = MakeTestSound(2, 100);
    WriteSound(mInput, input);
    const std::string shell = TestPlugin("vst/good/zel_shell" ZEL_MODULE);
    for (const std::vector<std::string>& arguments : std::vector<std::vector<std::string>>{
             {"--effect", kPlain, "--map", "in=2,1", mInput, mOutput},
             {mInput, "--effect", kPlain, "--map", "in=2,1", mOutput},
             {mInput, "--effect", kGain, "--set", "1=0.5", mOutput, "--effect", kPlain, "--map", "in=2,1"},
             {"--effect", shell, "--component", "Shell Stereo", "--map", "in=2,1", mInput, mOutput}}) {
        std::filesystem::remove(mOutput);
        std::vector<std::string> all = {"render"};
        all.insert(all.end(), arguments.begin(), arguments.end());
        const auto program = Start(all);
        ASSERT_EQ(program->Wait(), 0) << program->GetErrors();
        EXPECT_EQ(ReadSound(mOutput).channels.size(), 2u);
    }
}

TEST_F(TessalyRenderTest, AParameterIsSetByNumberByNameAndInSmallLetters) {
    const Sound input = MakeLevel(2, 100, 0.25f);
    for (const char* const setting : {"1=1", "Gain=1", "gAIN=1"})
        EXPECT_THAT(Render(input, {"--effect", kGain, "--set", setting})[0], Each(0.5f)) << setting;
    EXPECT_THAT(Render(input, {"--effect", kGain, "--set", "1=0", "--set", "1=0.5"})[0], Each(0.25f));
}

TEST_F(TessalyRenderTest, EffectsFollowEachOtherInTheirOrder) {
    Sound input = MakeLevel(2, 100, 0.5f);
    input.channels[1].assign(100, 0.0f);
    const std::vector<std::string> narrow = {"--effect", kGain, "--set", "Width=0"};
    const std::vector<std::string> left = {"--effect", kGain, "--set", "Balance=0"};
    const auto join = [](std::vector<std::string> a, const std::vector<std::string>& b) {
        a.insert(a.end(), b.begin(), b.end());
        return a;
    };
    const Sound narrowFirst = Render(input, join(narrow, left));
    EXPECT_EQ(narrowFirst[0][50], 0.25f);
    EXPECT_EQ(narrowFirst[1][50], 0.0f);
    const Sound leftFirst = Render(input, join(left, narrow));
    EXPECT_EQ(leftFirst[0][50], 0.25f);
    EXPECT_EQ(leftFirst[1][50], 0.25f);
}

TEST_F(TessalyRenderTest, AComponentIsChosenForTheEffectThatItStandsBehind) {
    WriteSound(mInput, MakeTestSound(2, 100));
    const std::string shell = TestPlugin("vst/good/zel_shell" ZEL_MODULE);
    EXPECT_THAT(Fail(1, {"--effect", shell}), HasSubstr("may be one of several"));
    EXPECT_THAT(Render({"--effect", kPlain, "--effect", shell, "--component", "Shell Stereo"}),
                HasSubstr("  Zel Plain: in 1,2, out 1,2\n  Shell Stereo: in 1,2, out 1,2\n"));
}

// The side-chain

TEST_F(TessalyRenderTest, ASideChainIsHeardByTheEffectAndAsSilenceBehindItsEnd) {
    WriteSound(Path("key.wav"), MakeLevel(1, 600, 0.75f));
    const Sound output = Render(MakeLevel(2, 1000, 0.5f), {"--side-chain", Path("key.wav"), "--block", "128",
                                                           "--effect", kSideChain, "--set", "Amount=1"});
    ASSERT_EQ(output.channels.size(), 2u);
    ASSERT_EQ(output.GetFrameCount(), 1000u);
    for (std::size_t i = 0; i < 1000; ++i) ASSERT_EQ(output[0][i], i < 600 ? 0.125f : 0.5f) << i;
}

TEST_F(TessalyRenderTest, ALongerSideChainIsCut) {
    WriteSound(Path("key.wav"), MakeLevel(2, 5000, 0.75f));
    const Sound output = Render(MakeLevel(2, 1000, 0.5f),
                                {"--effect", kSideChain, "--set", "Amount=1", "--side-chain", Path("key.wav")});
    EXPECT_EQ(output.GetFrameCount(), 1000u);
    EXPECT_THAT(output[1], Each(0.125f));
}

TEST_F(TessalyRenderTest, EveryEffectOfTheChainHearsTheSideChain) {
    WriteSound(Path("key.wav"), MakeLevel(1, 1000, 0.5f));
    const Sound output =
        Render(MakeLevel(2, 1000, 0.5f), {"--side-chain", Path("key.wav"), "--effect", kSideChain, "--set", "1=1",
                                          "--effect", TestPlugin("vst3/good/ZelSideChain3.vst3")});
    EXPECT_THAT(output[0], Each(0.125f));
}

TEST_F(TessalyRenderTest, AMapMayLeaveTheSideChainOut) {
    WriteSound(Path("key.wav"), MakeLevel(1, 1000, 0.75f));
    const Sound output = Render(MakeLevel(2, 1000, 0.5f), {"--side-chain", Path("key.wav"), "--effect", kSideChain,
                                                           "--set", "1=1", "--map", "in=1,2,-,-"});
    EXPECT_THAT(output[0], Each(0.5f));
}

TEST_F(TessalyRenderTest, ARealCompressorDucksToItsSideChainAndNotWithoutOne) {
    const std::string compressor = "/usr/lib/vst/ZamCompX2-vst.so";
    if (!FindInstalledPlugins().count(compressor)) GTEST_SKIP() << compressor << " is not installed";
    mIgnoresLeaks = true;
    const Sound quiet = MakeSound(2, 48000, [](std::size_t, std::size_t i) {
        return static_cast<float>(0.1 * std::sin(0.05 * static_cast<double>(i)));
    });
    WriteSound(Path("key.wav"), MakeSound(1, 48000, [](std::size_t, std::size_t i) {
                   return static_cast<float>(0.9 * std::sin(0.05 * static_cast<double>(i)));
               }));
    const std::vector<std::string> effect = {"--effect", compressor,        "--set", "Sidechain=1",
                                             "--set",    "Threshold=0.625", "--set", "Ratio=1"};
    std::vector<std::string> keyed = effect;
    keyed.insert(keyed.end(), {"--side-chain", Path("key.wav")});
    const double alone = MeasureLoudness(Render(quiet, effect)[0]);
    const double ducked = MeasureLoudness(Render(quiet, keyed)[0]);
    EXPECT_GT(alone, 0.5 * MeasureLoudness(quiet[0]));
    EXPECT_LT(ducked, 0.5 * alone);
}

// The summary

TEST_F(TessalyRenderTest, TheSummaryTellsLengthRoutesAndPeaks) {
    Sound input = MakeLevel(2, 24000, 0.0f);
    input.channels[0][7] = -0.5f;
    WriteSound(mInput, input);
    EXPECT_EQ(Render({"--effect", kPlain, "--map", "in=1,-"}), mOutput +
                                                                   ": 24000 frames, 0.500 s at 48000 Hz\n"
                                                                   "  Zel Plain: in 1,-, out 1,2\n"
                                                                   "  Left: -6.0 dBFS\n"
                                                                   "  Right: silence\n"
                                                                   "  not finite: 0\n");
}

TEST_F(TessalyRenderTest, SamplesThatAreNoFiniteNumbersAreCountedAndWrittenAsSilence) {
    Sound input = MakeLevel(2, 100, 0.5f);
    input.channels[0][10] = std::numeric_limits<float>::quiet_NaN();
    input.channels[1][20] = std::numeric_limits<float>::infinity();
    input.channels[1][21] = -std::numeric_limits<float>::infinity();
    WriteSound(mInput, input);
    EXPECT_THAT(Render({"--effect", kPlain}), HasSubstr("not finite: 3\n"));
    const Sound output = ReadSound(mOutput);
    EXPECT_EQ(output[0][10], 0.0f);
    EXPECT_EQ(output[1][20], 0.0f);
    EXPECT_EQ(output[1][21], 0.0f);
    EXPECT_EQ(output[1][22], 0.5f);
}

TEST_F(TessalyRenderTest, WhatAFileOfIntegersCannotHoldIsCutOffAndCounted) {
    Sound input = MakeLevel(2, 100, 0.5f);
    input.channels[0][10] = 1.5f;
    input.channels[0][11] = -4.0f;
    WriteSound(mInput, input);
    const auto program = Start({"render", mInput, Path("a.aiff"), "--effect", kPlain});
    ASSERT_EQ(program->Wait(), 0) << program->GetErrors();
    EXPECT_THAT(program->GetOutput(), HasSubstr("clipped: 2\n"));
    const Sound output = ReadSound(Path("a.aiff"));
    EXPECT_NEAR(output[0][10], 1.0f, 1e-6f);
    EXPECT_NEAR(output[0][11], -1.0f, 1e-6f);
    EXPECT_THAT(Render({"--effect", kPlain}), Not(HasSubstr("clipped")));
}

}  // namespace zeltests
