#include "PlayingChain.h"

#include <cmath>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "PlayerStage.h"

using namespace tessaly;
using testing::Each;

namespace zeltests {

namespace {

constexpr int kFrames = 512;

/// A stereo track of one level with one effect in it, which mutes it.
class MutedTrack {
public:
    explicit MutedTrack(bool comesIn = false) : mEffect(MakeEffect(TestPlugin("vst/good/zel_gain" ZEL_MODULE))) {
        const auto layout = zelmediatypes::MakeChannelLayoutForCount(2);
        mEffect->SetTargetFormat(layout, {});
        const auto played = std::make_shared<PlayedEffect>(mEffect, comesIn);
        EXPECT_TRUE(played->Start(48000.0, kFrames));
        mEffect->GetFilter()->SetParameterValue(FindParameter(*mEffect->GetFilter(), "Mute"), 1.0f);
        mChain = std::make_unique<PlayingChain>(std::vector<PlayedEffectPtr>{played}, 2, 0, kFrames);
    }

    ChainEffect& GetEffect() { return *mEffect; }

    /// The left channel of the next block.
    std::vector<float> Process() {
        std::vector<float> left(kFrames, 0.5f), right(kFrames, 0.5f);
        float* const channels[] = {left.data(), right.data()};
        mChain->Process(channels, channels, kFrames);
        EXPECT_EQ(left, right);
        return left;
    }

private:
    const ChainEffectPtr mEffect;
    std::unique_ptr<PlayingChain> mChain;
};

float GetLargestStep(const std::vector<float>& samples) {
    float largest = 0.0f;
    for (std::size_t i = 1; i < samples.size(); ++i)
        largest = std::max(largest, std::fabs(samples[i] - samples[i - 1]));
    return largest;
}

}  // namespace

TEST(PlayingChainTest, BypassingAndBackIsAFadeAndNoClick) {
    MutedTrack track;
    std::vector<float> heard;
    const auto process = [&] {
        const std::vector<float> block = track.Process();
        heard.insert(heard.end(), block.begin(), block.end());
        return block;
    };
    EXPECT_THAT(process(), Each(0.0f));
    track.GetEffect().SetBypassed(true);
    process();
    EXPECT_THAT(process(), Each(0.5f));
    track.GetEffect().SetBypassed(false);
    process();
    EXPECT_THAT(process(), Each(0.0f));
    EXPECT_LT(GetLargestStep(heard), 0.5f / kFrames * 1.01f);
    EXPECT_GT(GetLargestStep(heard), 0.5f / kFrames * 0.99f);
}

TEST(PlayingChainTest, AnEffectThatJoinsASoundComesInSoftly) {
    MutedTrack track(true);
    const std::vector<float> first = track.Process();
    EXPECT_GT(first[0], 0.49f);
    EXPECT_EQ(first.back(), 0.0f);
    EXPECT_LT(GetLargestStep(first), 0.5f / kFrames * 1.01f);
    EXPECT_THAT(track.Process(), Each(0.0f));
}

TEST(PlayingChainTest, AnEffectThatIsBypassedFromTheStartIsNotHeardAtAll) {
    const ChainEffectPtr effect = MakeEffect(TestPlugin("vst/good/zel_gain" ZEL_MODULE));
    effect->SetBypassed(true);
    effect->SetTargetFormat(zelmediatypes::MakeChannelLayoutForCount(2), {});
    const auto played = std::make_shared<PlayedEffect>(effect, false);
    ASSERT_TRUE(played->Start(48000.0, kFrames));
    effect->GetFilter()->SetParameterValue(FindParameter(*effect->GetFilter(), "Mute"), 1.0f);
    PlayingChain chain({played}, 2, 0, kFrames);
    const std::vector<float> input(kFrames, 0.5f);
    std::vector<float> left(kFrames), right(kFrames);
    const float* const inputs[] = {input.data(), input.data()};
    float* const outputs[] = {left.data(), right.data()};
    chain.Process(inputs, outputs, kFrames);
    EXPECT_THAT(left, Each(0.5f));
    EXPECT_THAT(right, Each(0.5f));
}

}  // namespace zeltests
