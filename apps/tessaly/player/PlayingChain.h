#pragma once

#include <cstddef>
#include <memory>
#include <vector>

#include "ChannelBuffers.h"
#include "PlayedEffect.h"

namespace tessaly {

/// Effects at work in a track, one after the other. Which they are never changes: another order is another object, with
/// the same effects. Made and let go of on the main thread.
class PlayingChain {
public:
    /// The effects are in a track of so many channels and side-chain channels. Blocks have at most `maximumFrames`
    /// frames.
    PlayingChain(std::vector<PlayedEffectPtr> effects, std::size_t channelCount, std::size_t sideChainChannelCount,
                 int maximumFrames);

    const std::vector<PlayedEffectPtr>& GetEffects() const { return mEffects; }

    /// Processes one block. `inputs` has one pointer per channel of the track and its side-chain, `outputs` one per
    /// channel of the track; an output may be the very memory of the input of the same channel. An effect that is not
    /// started passes the sound as it is, and so does a chain without effects. Sound thread; allocates nothing.
    void Process(const float* const* inputs, float* const* outputs, int frames);

private:
    const std::vector<PlayedEffectPtr> mEffects;
    const std::size_t mChannelCount;
    std::vector<const float*> mInputs;  ///< of the effect whose turn it is
    ChannelBuffers mScratch;
};

typedef std::shared_ptr<PlayingChain> PlayingChainPtr;

}  // namespace tessaly
