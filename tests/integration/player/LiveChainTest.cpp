#include "LiveChain.h"

#include <algorithm>
#include <atomic>
#include <chrono>
#include <random>
#include <thread>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "PlayerStage.h"
#include "support/ThrowAwayFolder.h"
#include "support/WaitFor.h"

using namespace tessaly;
using testing::ElementsAre;
using testing::IsEmpty;

namespace zeltests {

namespace {

constexpr int kBlock = SoundEngine::kBlockFrames;

/// A loop of one level that is pulled by a thread of its own, until the object goes.
class PulledSound {
public:
    PulledSound() : mStops(false), mOddSamples(0) {
        WriteSound(mFolder.Path("in.wav"), MakeLevel(2, 30 * 48000, 0.5f));
        mFeeder = std::make_unique<FileFeeder>(mFolder.Path("in.wav"), "", 0);
        mEngine = std::make_unique<SoundEngine>(*mFeeder);
        mEngine->SetLooping(true);
        WaitForSound(*mFeeder);
    }
    ~PulledSound() { Stop(); }

    SoundEngine& GetEngine() { return *mEngine; }
    LiveChain MakeChain() { return LiveChain(*mEngine, 48000, zelmediatypes::MakeChannelLayoutForCount(2), {}); }

    void Start() {
        mThread = std::thread([this] { Run(); });
    }
    void Stop() {
        mStops = true;
        if (mThread.joinable()) mThread.join();
    }
    /// Waits until so many more blocks were made from now on.
    void WaitForBlocks(std::uint64_t count) {
        const std::uint64_t wanted = mEngine->GetBlockCount() + count;
        ASSERT_TRUE(WaitFor([&] { return mEngine->GetBlockCount() >= wanted; }));
    }
    /// Samples that are none between silence and this level.
    std::size_t GetOddSampleCount() const { return mOddSamples; }

private:
    void Run() {
        using namespace std::chrono;
        std::vector<float> left(kBlock), right(kBlock);
        float* const channels[] = {left.data(), right.data()};
        auto due = steady_clock::now();
        while (!mStops) {
            mEngine->Render(channels, kBlock);
            for (const float sample : left) mOddSamples += sample < -0.001f || sample > 0.501f ? 1 : 0;
            due += duration_cast<steady_clock::duration>(duration<double>(kBlock / 48000.0 / kPace));
            WaitFor([&] { return mStops || steady_clock::now() >= due; });
        }
    }

    /// So many times as fast as it would be heard.
    static constexpr double kPace = 8.0;

    ThrowAwayFolder mFolder;
    std::unique_ptr<FileFeeder> mFeeder;
    std::unique_ptr<SoundEngine> mEngine;
    std::thread mThread;
    std::atomic<bool> mStops;
    std::atomic<std::size_t> mOddSamples;
};

const char* const kGain = "vst/good/zel_gain" ZEL_MODULE;
const char* const kGain3 = "vst3/good/ZelGain3.vst3";

}  // namespace

TEST(LiveChainTest, AnEffectIsStartedBeforeItIsHeardAndStoppedWhenItWent) {
    PulledSound sound;
    LiveChain chain = sound.MakeChain();
    const ChainEffectPtr effect = MakeEffect(TestPlugin(kGain));
    EXPECT_THAT(chain.SetEffects({effect}), IsEmpty());
    EXPECT_TRUE(effect->GetFilter()->IsProcessing());
    sound.Start();
    sound.WaitForBlocks(2);
    EXPECT_THAT(chain.SetEffects({}), IsEmpty());
    EXPECT_TRUE(WaitFor([&] { return !effect->GetFilter()->IsProcessing(); }, std::chrono::seconds(20),
                        [&] { chain.Collect(); }));
}

TEST(LiveChainTest, AnEffectThatWentIsAtWorkUntilTheSoundThreadHasLetGoOfIt) {
    PulledSound sound;
    LiveChain chain = sound.MakeChain();
    const ChainEffectPtr effect = MakeEffect(TestPlugin(kGain));
    chain.SetEffects({effect});
    Pull(sound.GetEngine(), kBlock, kBlock);
    chain.SetEffects({});
    chain.Collect();
    EXPECT_TRUE(effect->GetFilter()->IsProcessing());
    // It goes and comes back: nothing of it has stopped.
    chain.SetEffects({effect});
    chain.SetEffects({});
    Pull(sound.GetEngine(), kBlock, kBlock);
    chain.Collect();
    EXPECT_FALSE(effect->GetFilter()->IsProcessing());
}

TEST(LiveChainTest, TheLastReferenceGoesOnTheMainThread) {
    PulledSound sound;
    LiveChain chain = sound.MakeChain();
    ChainEffectPtr effect = MakeEffect(TestPlugin(kGain));
    const std::weak_ptr<ChainEffect> watched = effect;
    chain.SetEffects({effect});
    sound.Start();
    sound.WaitForBlocks(2);
    effect.reset();
    chain.SetEffects({});
    sound.WaitForBlocks(3);
    EXPECT_FALSE(watched.expired());
    chain.Collect();
    EXPECT_TRUE(watched.expired());
}

TEST(LiveChainTest, AnEffectThatRefusesIsPassedByAndToldOnce) {
    PulledSound sound;
    LiveChain chain = sound.MakeChain();
    const ChainEffectPtr refuses = MakeEffect(TestPlugin("vst/bad/throws_when_started" ZEL_MODULE));
    const ChainEffectPtr works = MakeEffect(TestPlugin(kGain));
    EXPECT_THAT(chain.SetEffects({refuses, works}), ElementsAre(refuses));
    EXPECT_TRUE(works->GetFilter()->IsProcessing());
    EXPECT_THAT(chain.SetEffects({works, refuses}), IsEmpty());
    EXPECT_FALSE(refuses->GetFilter()->IsProcessing());
    EXPECT_EQ(Pull(sound.GetEngine(), kBlock, kBlock)[0][0], 0.5f);
}

TEST(LiveChainTest, AThousandChangesWhileItPlaysLoseNothingAndUseNothingThatWent) {
    PulledSound sound;
    LiveChain chain = sound.MakeChain();
    std::mt19937 random(7);
    LiveChain::Effects effects = {MakeEffect(TestPlugin(kGain)), MakeEffect(TestPlugin(kGain3))};
    LiveChain::Effects spare = {MakeEffect(TestPlugin(kGain)), MakeEffect(TestPlugin(kGain3))};
    chain.SetEffects(effects);
    sound.Start();
    for (int i = 0; i < 1000; ++i) {
        std::shuffle(effects.begin(), effects.end(), random);
        if (random() % 2 != 0 && !effects.empty()) {
            spare.push_back(effects.back());
            effects.pop_back();
        } else if (!spare.empty()) {
            effects.push_back(spare.front());
            spare.erase(spare.begin());
        }
        if (!effects.empty()) effects[0]->SetBypassed(random() % 2 != 0);
        // One goes for good now and then, and a new one comes.
        if (i % 50 == 0 && !spare.empty()) spare[0] = MakeEffect(TestPlugin(i % 100 == 0 ? kGain : kGain3));
        EXPECT_THAT(chain.SetEffects(effects), IsEmpty());
        if (i % 3 == 0) sound.WaitForBlocks(1);
    }
    sound.Stop();
    EXPECT_EQ(sound.GetOddSampleCount(), 0u);
    EXPECT_EQ(sound.GetEngine().GetLostCount(), 0u);
    chain.SetEffects({});
    Pull(sound.GetEngine(), kBlock, kBlock);
    chain.Collect();
    for (const ChainEffectPtr& effect : spare) EXPECT_FALSE(effect->GetFilter()->IsProcessing());
    for (const ChainEffectPtr& effect : effects) EXPECT_FALSE(effect->GetFilter()->IsProcessing());
}

}  // namespace zeltests
