#include "EffectChain.h"

#include <algorithm>
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
    mFilters.push_back(filter);
}

bool EffectChain::SetTargetFormat(const AudioChannelLayout& layout, const AudioFilterBusDescription& sideChain) {
    const std::size_t channels = layout.size() + sideChain.GetLayout().size();
    if (channels > AudioFilter::kMaxTargetChannels) return false;
    Stop();
    mLayout = layout;
    mSideChain = sideChain;
    mInputs.assign(channels, nullptr);
    for (const FilterPtr& filter : mFilters) filter->SetTargetFormat(layout, sideChain);
    return true;
}

void EffectChain::Start(double sampleRate, int maximumFrames) {
    for (const FilterPtr& filter : mFilters) {
        if (filter->StartProcessing(sampleRate, maximumFrames)) continue;
        Stop();
        throw std::runtime_error(TerminalText::MakePrintable(TerminalText::FromText(filter->GetName())) +
                                 " refuses to process sound at " + std::to_string(static_cast<long>(sampleRate)) +
                                 " Hz in blocks of " + std::to_string(maximumFrames) + " frames");
    }
}

void EffectChain::Stop() {
    for (const FilterPtr& filter : mFilters) filter->StopProcessing();
}

void EffectChain::Process(const float* const* inputs, float* const* outputs, int frames) {
    if (frames <= 0) return;
    std::copy_n(inputs, mInputs.size(), mInputs.begin());
    for (const FilterPtr& filter : mFilters) {
        filter->Process(mInputs.data(), outputs, frames);
        // From the first effect on the track's sound is in the outputs; the side-chain stays what it is.
        std::copy_n(outputs, mLayout.size(), mInputs.begin());
    }
    if (!mFilters.empty()) return;
    for (std::size_t i = 0; i < mLayout.size(); ++i) {
        if (outputs[i] != inputs[i]) std::copy_n(inputs[i], frames, outputs[i]);
    }
}

}  // namespace tessaly
