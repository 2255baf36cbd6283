#pragma once

#include <cstddef>
#include <vector>

#include <boost/intrusive_ptr.hpp>
#include <zelaudiofilterhost/AudioFilter.h>

#include "PlayingChain.h"

namespace tessaly {

/// The effects of a track, one after the other. Main thread, but for Process.
class EffectChain {
public:
    typedef boost::intrusive_ptr<zelaudiofilterhost::AudioFilter> FilterPtr;

    EffectChain();
    /// Stops.
    ~EffectChain();
    EffectChain(const EffectChain&) = delete;
    EffectChain& operator=(const EffectChain&) = delete;

    /// Puts an effect (not null) behind the others and into the track's format. Stops.
    void Append(const FilterPtr& filter);
    std::size_t GetCount() const { return mEffects.size(); }
    const FilterPtr& GetFilter(std::size_t index) const { return mEffects[index]->GetFilter(); }

    /// Puts all effects into a track with these channels and this side-chain, which each of them hears. False, and
    /// nothing changed, for more than AudioFilter::kMaxTargetChannels. Stops.
    bool SetTargetFormat(const zelmediatypes::AudioChannelLayout& layout,
                         const zelaudiofilterhost::AudioFilterBusDescription& sideChain);

    /// Makes all effects ready for blocks of at most `maximumFrames` frames. Throws std::runtime_error that names the
    /// effect that refuses; none is started then.
    void Start(double sampleRate, int maximumFrames);
    void Stop();

    /// PlayingChain::Process, once started. Sound thread.
    void Process(const float* const* inputs, float* const* outputs, int frames);

private:
    std::vector<PlayedEffectPtr> mEffects;
    zelmediatypes::AudioChannelLayout mLayout;
    zelaudiofilterhost::AudioFilterBusDescription mSideChain;
    PlayingChainPtr mPlaying;  ///< null while stopped
};

}  // namespace tessaly
