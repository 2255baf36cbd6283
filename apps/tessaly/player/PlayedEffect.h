#pragma once

#include <cstddef>
#include <memory>

#include <boost/intrusive_ptr.hpp>
#include <zelaudiofilterhost/AudioFilter.h>

#include "ChainEffect.h"
#include "ChannelBuffers.h"

namespace tessaly {

/// An effect at work. Made and let go of on the main thread; its sound is the sound thread's, whichever chains it is
/// in.
class PlayedEffect {
public:
    typedef boost::intrusive_ptr<zelaudiofilterhost::AudioFilter> FilterPtr;

    /// Of a filter (not null) that is never bypassed.
    explicit PlayedEffect(const FilterPtr& filter);
    /// Of an effect that is not missing. The first block comes in softly when `comesIn`, for an effect that joins a
    /// sound that is heard already.
    PlayedEffect(const ChainEffectPtr& effect, bool comesIn);
    /// Stops the filter.
    ~PlayedEffect();
    PlayedEffect(const PlayedEffect&) = delete;
    PlayedEffect& operator=(const PlayedEffect&) = delete;

    const FilterPtr& GetFilter() const { return mFilter; }
    /// Makes the filter ready for blocks of at most `maximumFrames` frames. False when it refuses.
    bool Start(double sampleRate, int maximumFrames) { return mFilter->StartProcessing(sampleRate, maximumFrames); }
    void Stop() { mFilter->StopProcessing(); }

    /// Processes one block: `inputs` has one pointer per channel of the track and its side-chain, `outputs` one for
    /// each of the track's `channelCount`, which may be the memory of the same inputs. `scratch` has room for as much
    /// again.
    ///
    /// An effect that is bypassed hears the sound nevertheless, so that it comes back with what is played then and not
    /// with an echo of before. Between the two the block is cross-faded. Sound thread; allocates nothing.
    void Process(const float* const* inputs, float* const* outputs, float* const* scratch, std::size_t channelCount,
                 int frames);

private:
    bool IsWanted() const { return !mEffect || !mEffect->IsBypassed(); }

    const ChainEffectPtr mEffect;  ///< null for a filter without one
    const FilterPtr mFilter;
    bool mIsHeard;  ///< in the last block
};

typedef std::shared_ptr<PlayedEffect> PlayedEffectPtr;

}  // namespace tessaly
