#pragma once

#include <cstddef>
#include <vector>

#include <zelaudiofilterhost/AudioFilter.h>
#include <zelaudiofilterhost/SoundThreadValue.h>

namespace zelaudiofilterhost {

/// Carries sound between a track's channels and an effect's, as two channel maps say. Main thread but for Process.
class ChannelRouter {
public:
    ChannelRouter();

    /// The maps from the next block on; also in the middle of processing. Neither the number of effect channels nor
    /// that of main target channels changes while a Process is under way.
    void SetMaps(const ChannelMap& inputs, const ChannelMap& outputs, std::size_t mainTargets);

    /// Makes room for blocks of at most `maximumFrames` frames. False, and no room at all, when memory is short.
    bool Allocate(int inputChannels, int outputChannels, int maximumFrames);
    void Free();

    /// AudioFilter::Process. Sound thread.
    void Process(AudioFilter& filter, const float* const* inputs, float* const* outputs, int frames);

private:
    /// What becomes of one main target channel.
    struct Target {
        std::vector<int> sources;  ///< the effect outputs that it gets
        bool feedsEffect = false;
    };
    struct Routes {
        std::vector<int> effectInputs;  ///< the target channel that each reads, or kNotConnected
        std::size_t effectOutputs = 0;
        std::vector<Target> targets;
    };

    void RunEffect(AudioFilter& filter, const Routes& routes, const float* const* inputs, int frames);
    void Deliver(const Target& target, const float* input, float* output, std::size_t frames) const;

    SoundThreadValue<Routes> mRoutes;
    int mMaximumFrames;
    /// One buffer per effect output, and a silent one behind them.
    std::vector<float> mSamples;
    std::vector<const float*> mEffectInputs;
    std::vector<float*> mEffectOutputs;
};

}  // namespace zelaudiofilterhost
