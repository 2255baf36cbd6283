#include "EffectChain.h"

#include <stdexcept>
#include <string>

#include "TerminalText.h"

namespace tessaly {

using zelaudiofilterhost::AudioFilter;
using zelaudiofilterhost::AudioFilterBusDescription;
using zelmediatypes::AudioChannelLayout;

EffectChain::EffectChain() = default;

EffectChain::~EffectChain() { Stop(); }

void EffectChain::Append(const FilterPtr& filter) {
    Stop();
    filter->SetTargetFormat(mLayout, mSideChain);
    mEffects.push_back(std::make_shared<PlayedEffect>(filter));
}

bool EffectChain::SetTargetFormat(const AudioChannelLayout& layout, const AudioFilterBusDescription& sideChain) {
    const std::size_t channels = layout.size() + sideChain.GetLayout().size();
    if (channels > AudioFilter::kMaxTargetChannels) return false;
    Stop();
    mLayout = layout;
    mSideChain = sideChain;
    for (const PlayedEffectPtr& effect : mEffects) effect->GetFilter()->SetTargetFormat(layout, sideChain);
    return true;
}

void EffectChain::Start(double sampleRate, int maximumFrames) {
    for (const PlayedEffectPtr& effect : mEffects) {
        if (effect->Start(sampleRate, maximumFrames)) continue;
        Stop();
        throw std::runtime_error(TerminalText::MakePrintable(TerminalText::FromText(effect->GetFilter()->GetName())) +
                                 " refuses to process sound at " + std::to_string(static_cast<long>(sampleRate)) +
                                 " Hz in blocks of " + std::to_string(maximumFrames) + " frames");
    }
    mPlaying = std::make_shared<PlayingChain>(mEffects, mLayout.size(), mSideChain.GetLayout().size(), maximumFrames);
}

void EffectChain::Stop() {
    mPlaying.reset();
    for (const PlayedEffectPtr& effect : mEffects) effect->Stop();
}

void EffectChain::Process(const float* const* inputs, float* const* outputs, int frames) {
    mPlaying->Process(inputs, outputs, frames);
}

}  // namespace tessaly
