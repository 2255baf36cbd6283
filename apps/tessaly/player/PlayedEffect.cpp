#include "PlayedEffect.h"

#include <algorithm>

namespace tessaly {

namespace {

void Copy(const float* const* from, float* const* to, std::size_t channelCount, int frames) {
    for (std::size_t i = 0; i < channelCount; ++i) {
        if (from[i] != to[i]) std::copy_n(from[i], frames, to[i]);
    }
}

/// From what is in `inputs` over to what is in `effect`, or back.
void CrossFade(const float* const* inputs, const float* const* effect, float* const* outputs, std::size_t channelCount,
               int frames, bool toEffect) {
    const float step = 1.0f / static_cast<float>(frames);
    for (std::size_t channel = 0; channel < channelCount; ++channel) {
        for (int i = 0; i < frames; ++i) {
            const float done = step * static_cast<float>(i + 1);
            const float share = toEffect ? done : 1.0f - done;
            const float dry = inputs[channel][i];
            outputs[channel][i] = dry + share * (effect[channel][i] - dry);
        }
    }
}

}  // namespace

PlayedEffect::PlayedEffect(const FilterPtr& filter) : mFilter(filter), mIsHeard(true) {}

PlayedEffect::PlayedEffect(const ChainEffectPtr& effect, bool comesIn)
    : mEffect(effect), mFilter(effect->GetFilter()), mIsHeard(!comesIn && IsWanted()) {}

PlayedEffect::~PlayedEffect() { Stop(); }

void PlayedEffect::Process(const float* const* inputs, float* const* outputs, float* const* scratch,
                           std::size_t channelCount, int frames) {
    const bool isWanted = IsWanted();
    if (isWanted && mIsHeard) {
        mFilter->Process(inputs, outputs, frames);
        return;
    }
    mFilter->Process(inputs, scratch, frames);
    if (isWanted == mIsHeard)
        Copy(inputs, outputs, channelCount, frames);
    else
        CrossFade(inputs, scratch, outputs, channelCount, frames, isWanted);
    mIsHeard = isWanted;
}

}  // namespace tessaly
