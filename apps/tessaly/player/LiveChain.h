#pragma once

#include <map>
#include <memory>
#include <vector>

#include <zelaudiofilterhost/AudioFilterBusDescription.h>
#include <zelmediatypes/AudioChannelLayout.h>

#include "ChainEffect.h"
#include "PlayedEffect.h"
#include "PlayingChain.h"

namespace tessaly {

class SoundEngine;

/// A session's effects at work in an engine, also while they come, go and move. Main thread.
///
/// An effect that comes is ready before the sound thread sees it. One that went works on until the sound thread has let
/// go of it, and is stopped on the main thread then; when it comes back before that it just goes on.
class LiveChain {
public:
    typedef std::vector<ChainEffectPtr> Effects;

    /// The engine outlives the object.
    LiveChain(SoundEngine& engine, int sampleRate, const zelmediatypes::AudioChannelLayout& layout,
              const zelaudiofilterhost::AudioFilterBusDescription& sideChain);

    /// Puts the effects to work, in this order, and no others. Those that are missing or refuse are passed by. Returns
    /// those that refused for the first time.
    Effects SetEffects(const Effects& effects);
    /// Stops what went and what the sound thread has let go of since.
    void Collect();

private:
    PlayedEffectPtr Find(const ChainEffect& effect) const;
    PlayedEffectPtr Start(const ChainEffectPtr& effect);

    SoundEngine& mEngine;
    const int mSampleRate;
    const zelmediatypes::AudioChannelLayout mLayout;
    const zelaudiofilterhost::AudioFilterBusDescription mSideChain;
    bool mIsHeard;
    std::vector<PlayedEffectPtr> mNow;
    std::map<const ChainEffect*, std::weak_ptr<PlayedEffect>> mAtWork;  ///< those that went included
    std::vector<std::weak_ptr<ChainEffect>> mRefused;
};

}  // namespace tessaly
