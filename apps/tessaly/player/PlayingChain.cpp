#include "PlayingChain.h"

#include <algorithm>

namespace tessaly {

PlayingChain::PlayingChain(std::vector<PlayedEffectPtr> effects, std::size_t channelCount,
                           std::size_t sideChainChannelCount, int maximumFrames)
    : mEffects(std::move(effects)),
      mChannelCount(channelCount),
      mInputs(channelCount + sideChainChannelCount),
      mScratch(channelCount, maximumFrames) {}

void PlayingChain::Process(const float* const* inputs, float* const* outputs, int frames) {
    if (frames <= 0) return;
    std::copy_n(inputs, mInputs.size(), mInputs.begin());
    for (const PlayedEffectPtr& effect : mEffects) {
        effect->Process(mInputs.data(), outputs, mScratch.GetChannels(), mChannelCount, frames);
        // From the first effect on the track's sound is in the outputs; the side-chain stays what it is.
        std::copy_n(outputs, mChannelCount, mInputs.begin());
    }
    if (!mEffects.empty()) return;
    for (std::size_t i = 0; i < mChannelCount; ++i) {
        if (outputs[i] != inputs[i]) std::copy_n(inputs[i], frames, outputs[i]);
    }
}

}  // namespace tessaly
