#include "LiveChain.h"

#include <algorithm>

#include "SoundEngine.h"

namespace tessaly {

LiveChain::LiveChain(SoundEngine& engine, int sampleRate, const zelmediatypes::AudioChannelLayout& layout,
                     const zelaudiofilterhost::AudioFilterBusDescription& sideChain)
    : mEngine(engine), mSampleRate(sampleRate), mLayout(layout), mSideChain(sideChain), mIsHeard(false) {}

LiveChain::Effects LiveChain::SetEffects(const Effects& effects) {
    Collect();
    Effects refused;
    std::vector<PlayedEffectPtr> played;
    for (const ChainEffectPtr& effect : effects) {
        const auto isSame = [&](const std::weak_ptr<ChainEffect>& other) { return other.lock() == effect; };
        if (effect->IsMissing() || std::any_of(mRefused.begin(), mRefused.end(), isSame)) continue;
        PlayedEffectPtr atWork = Find(*effect);
        if (!atWork) atWork = Start(effect);
        (atWork ? played.push_back(atWork) : refused.push_back(effect));
    }
    mRefused.insert(mRefused.end(), refused.begin(), refused.end());
    // Being bypassed is the effects' own: the order is the same.
    if (mIsHeard && played == mNow) return refused;
    mIsHeard = true;
    mNow = played;
    mEngine.SetChain(std::make_shared<PlayingChain>(std::move(played), mLayout.size(), mSideChain.GetLayout().size(),
                                                    SoundEngine::kBlockFrames));
    return refused;
}

void LiveChain::Collect() {
    mEngine.CollectChains();
    std::erase_if(mAtWork, [](const auto& entry) { return entry.second.expired(); });
}

PlayedEffectPtr LiveChain::Find(const ChainEffect& effect) const {
    const auto found = mAtWork.find(&effect);
    return found == mAtWork.end() ? nullptr : found->second.lock();
}

PlayedEffectPtr LiveChain::Start(const ChainEffectPtr& effect) {
    effect->SetTargetFormat(mLayout, mSideChain);
    auto played = std::make_shared<PlayedEffect>(effect, mIsHeard);
    if (!played->Start(mSampleRate, SoundEngine::kBlockFrames)) return nullptr;
    mAtWork[effect.get()] = played;
    return played;
}

}  // namespace tessaly
