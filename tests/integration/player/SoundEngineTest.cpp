#include "SoundEngine.h"

#include <cmath>
#include <limits>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "PlayerStage.h"
#include "RenderedSound.h"
#include "support/AllocationCount.h"
#include "support/ThrowAwayFolder.h"

using namespace tessaly;
using testing::Each;
using testing::ElementsAre;

namespace zeltests {

namespace {

constexpr std::size_t kBlock = SoundEngine::kBlockFrames;
// The feeder begins with a quarter of a second: what is pulled below at once stays under 12000 frames.

class SoundEngineTest : public testing::Test {
protected:
    std::string Write(const std::string& name, const Sound& sound) {
        WriteSound(mFolder.Path(name), sound);
        return mFolder.Path(name);
    }

    ThrowAwayFolder mFolder;
};

/// `sound`, `count` times in a row.
Sound Repeat(const Sound& sound, std::size_t count) {
    return MakeSound(sound.channels.size(), sound.GetFrameCount() * count,
                     [&](std::size_t channel, std::size_t i) { return sound[channel][i % sound.GetFrameCount()]; });
}

/// `sound` from a frame on, with silence behind it.
Sound Cut(const Sound& sound, std::size_t first, std::size_t frames) {
    return MakeSound(sound.channels.size(), frames, [&](std::size_t channel, std::size_t i) {
        return first + i < sound.GetFrameCount() ? sound[channel][first + i] : 0.0f;
    });
}

const std::vector<std::string>& GetModules() {
    static const std::vector<std::string> modules = {
        TestPlugin("vst/good/zel_sidechain" ZEL_MODULE), TestPlugin("vst3/good/ZelGain3.vst3"),
        TestPlugin("vst/good/zel_gain" ZEL_MODULE), TestPlugin("vst3/good/ZelSideChain3.vst3")};
    return modules;
}

}  // namespace

TEST_F(SoundEngineTest, ItPlaysWhatIsRendered) {
    const Sound sound = MakeTestSound(2, 20 * kBlock + 99);
    const std::string path = Write("in.wav", sound);
    const std::string side = Write("side.wav", MakeTestSound(2, 10 * kBlock + 7));
    FileFeeder feeder(path, side, 0);
    SoundEngine engine(feeder);
    engine.SetChain(MakeChain(feeder, GetModules()));
    WaitForSound(feeder);
    const Sound rendered = RenderFile(path, side, GetModules(), 2000);
    EXPECT_EQ(CountDifferences(Pull(engine, rendered.GetFrameCount()), rendered), 0u);
    EXPECT_GT(*std::max_element(rendered[0].begin(), rendered[0].end()), 0.1f);
    EXPECT_EQ(engine.GetLostCount(), 0u);
}

TEST_F(SoundEngineTest, ItPlaysALoopLikeARenderedFileThatRepeatsItself) {
    const Sound sound = MakeTestSound(2, 3 * kBlock + 99);
    const Sound side = MakeTestSound(1, kBlock + 7);
    FileFeeder feeder(Write("in.wav", sound), Write("side.wav", side), 0);
    SoundEngine engine(feeder);
    engine.SetLooping(true);
    engine.SetChain(MakeChain(feeder, GetModules()));
    WaitForSound(feeder);
    const std::string again = Write("again.wav", Repeat(sound, 7));
    const std::string sideAgain = Write("sideAgain.wav", Repeat(Cut(side, 0, sound.GetFrameCount()), 7));
    const Sound rendered = RenderFile(again, sideAgain, GetModules(), 0);
    EXPECT_EQ(CountDifferences(Pull(engine, rendered.GetFrameCount(), 1000), rendered), 0u);
}

TEST_F(SoundEngineTest, ItPlaysOnBehindASeekLikeAFileThatBeginsThere) {
    const Sound sound = MakeTestSound(2, 200 * kBlock);
    FileFeeder feeder(Write("in.wav", sound), "", 0);
    SoundEngine engine(feeder);
    WaitForSound(feeder);
    Pull(engine, 10 * kBlock);
    feeder.Seek(100 * kBlock + 33);
    WaitForSound(feeder);
    // Only now: what the effects heard before would not be in the file.
    engine.SetChain(MakeChain(feeder, {TestPlugin("vst3/good/ZelGain3.vst3")}));
    const std::string rest = Write("rest.wav", Cut(sound, 100 * kBlock + 33, 20 * kBlock));
    const Sound rendered = RenderFile(rest, "", {TestPlugin("vst3/good/ZelGain3.vst3")}, 0);
    EXPECT_EQ(CountDifferences(Pull(engine, rendered.GetFrameCount(), kBlock), rendered), 0u);
}

TEST_F(SoundEngineTest, ThePiecesThatAreAskedForDoNotMatter) {
    const Sound sound = MakeTestSound(3, 8 * kBlock);
    const std::string path = Write("in.wav", sound);
    for (const int piece : {1, 37, 511, 512, 513, 4096}) {
        FileFeeder feeder(path, "", 0);
        SoundEngine engine(feeder);
        WaitForSound(feeder);
        EXPECT_EQ(CountDifferences(Pull(engine, sound.GetFrameCount(), piece), sound), 0u) << piece;
    }
}

TEST_F(SoundEngineTest, BehindTheEndItIsSilentAndCounts) {
    FileFeeder feeder(Write("in.wav", MakeLevel(1, kBlock + 100, 0.5f)), "", 0);
    SoundEngine engine(feeder);
    WaitForSound(feeder);
    Pull(engine, kBlock);
    EXPECT_EQ(engine.GetFramesAfterEnd(), 0);
    Pull(engine, kBlock);
    EXPECT_EQ(engine.GetFramesAfterEnd(), static_cast<std::int64_t>(kBlock - 100));
    EXPECT_THAT(Pull(engine, 2 * kBlock)[0], Each(0.0f));
    EXPECT_EQ(engine.GetFramesAfterEnd(), static_cast<std::int64_t>(3 * kBlock - 100));
    feeder.Seek(0);
    WaitForSound(feeder);
    EXPECT_THAT(Pull(engine, kBlock)[0], Each(0.5f));
    EXPECT_EQ(engine.GetFramesAfterEnd(), 0);
}

TEST_F(SoundEngineTest, ADiskThatIsTooSlowCostsWholeBlocksAndNoSound) {
    const Sound sound = MakeCountingSound(1, 20 * 48000);
    FileFeeder feeder(Write("in.wav", sound), "", 0);
    SoundEngine engine(feeder);
    WaitForSound(feeder);
    // No disk is as fast as this takes it.
    Sound pulled = MakeSound(1, 0, {});
    while (engine.GetLostCount() == 0) {
        const Sound more = Pull(engine, kBlock, kBlock);
        pulled.channels[0].insert(pulled.channels[0].end(), more[0].begin(), more[0].end());
        ASSERT_LT(pulled.GetFrameCount(), 10u * sound.GetFrameCount());
        if (feeder.GetState() == FileFeeder::kEnd) feeder.Seek(0);
    }
    EXPECT_EQ(engine.GetLostCount(), 1u);
    EXPECT_THAT(std::vector<float>(pulled[0].end() - kBlock, pulled[0].end()), Each(0.0f));
    const float last = pulled[0][pulled.GetFrameCount() - kBlock - 1];
    while (feeder.GetState() == FileFeeder::kLate) pulled = Pull(engine, kBlock, kBlock);
    EXPECT_EQ(GetPlace(pulled[0][0], 1), GetPlace(last, 1) + 1);
}

TEST_F(SoundEngineTest, PeaksAreOfWhatWasPlayedSinceTheyWereTaken) {
    Sound sound = MakeLevel(2, 4 * kBlock, 0.0f);
    sound.channels[0][10] = -0.75f;
    sound.channels[1][kBlock + 10] = 0.25f;
    FileFeeder feeder(Write("in.wav", sound), "", 0);
    SoundEngine engine(feeder);
    WaitForSound(feeder);
    EXPECT_THAT(engine.TakePeaks(), ElementsAre(0.0f, 0.0f));
    Pull(engine, kBlock);
    EXPECT_THAT(engine.TakePeaks(), ElementsAre(0.75f, 0.0f));
    Pull(engine, 2 * kBlock);
    EXPECT_THAT(engine.TakePeaks(), ElementsAre(0.0f, 0.25f));
    EXPECT_THAT(engine.TakePeaks(), ElementsAre(0.0f, 0.0f));
}

TEST_F(SoundEngineTest, WhatIsNoFiniteNumberIsSilent) {
    Sound sound = MakeLevel(1, kBlock, 0.5f);
    sound.channels[0][3] = std::numeric_limits<float>::quiet_NaN();
    sound.channels[0][4] = std::numeric_limits<float>::infinity();
    FileFeeder feeder(Write("in.wav", sound), "", 0);
    SoundEngine engine(feeder);
    WaitForSound(feeder);
    const Sound pulled = Pull(engine, kBlock);
    EXPECT_EQ(pulled[0][2], 0.5f);
    EXPECT_EQ(pulled[0][3], 0.0f);
    EXPECT_EQ(pulled[0][4], 0.0f);
    EXPECT_THAT(engine.TakePeaks(), ElementsAre(0.5f));
}

TEST_F(SoundEngineTest, TheSoundThreadAllocatesAndFreesNothing) {
    FileFeeder feeder(Write("in.wav", MakeTestSound(2, 48000)), Write("side.wav", MakeTestSound(2, 1000)), 0);
    SoundEngine engine(feeder);
    engine.SetLooping(true);
    engine.SetChain(MakeChain(feeder, GetModules()));
    std::vector<float> left(700), right(700);
    float* const channels[] = {left.data(), right.data()};
    {
        const AllocationCount count;
        engine.Render(channels, 700);
        EXPECT_EQ(count.Get(), 0u) << "before there is sound";
    }
    WaitForSound(feeder);
    engine.Render(channels, 700);
    engine.SetChain(MakeChain(feeder, GetModules()));
    feeder.Seek(30000);
    WaitForSound(feeder);
    const AllocationCount count;
    for (int i = 0; i < 20; ++i) engine.Render(channels, 700);
    EXPECT_EQ(count.Get(), 0u) << "a seek and another chain included";
    EXPECT_NE(left[100], 0.0f);
}

}  // namespace zeltests
