#include "ChannelRouting.h"

#include <algorithm>

#include "ChannelMapRules.h"

namespace zelaudiofilterhost {

ChannelRouting::ChannelRouting() : mEffectChannels{} {}

void ChannelRouting::SetEffectChannels(int inputs, int outputs) {
    mEffectChannels = {inputs, outputs};
    for (const AudioFilter::Direction direction : {AudioFilter::kInput, AudioFilter::kOutput})
        mMaps[direction] = Clean(mMaps[direction], direction);
    PassMapsOn();
}

void ChannelRouting::SetTarget(const zelmediatypes::AudioChannelLayout& layout,
                               const AudioFilterBusDescription& sideChain, const AudioFilterBusList& inputs,
                               const AudioFilterBusList& outputs) {
    mTargetLayout = layout;
    mSideChain = sideChain;
    mEffectChannels = {CountChannels(inputs), CountChannels(outputs)};
    mMaps[AudioFilter::kInput] = ConnectSideChain(BuildBestFitMap(inputs, layout), inputs, sideChain.GetLayout(),
                                                  static_cast<int>(layout.size()), true);
    mMaps[AudioFilter::kOutput] = BuildBestFitMap(outputs, layout);
    PassMapsOn();
}

void ChannelRouting::TellTarget(const std::array<ChannelMap, 2>& before) {
    const std::array<ChannelMap, 2> after = mMaps;
    // The track first: who shows the maps has to know of which channels they speak.
    mTargetChanged();
    for (const AudioFilter::Direction direction : {AudioFilter::kInput, AudioFilter::kOutput}) {
        // A map that somebody has changed on hearing of it has been told by then; what was before would come last.
        const bool isCurrent = mMaps[direction] == after[direction];
        if (isCurrent && before[direction] != after[direction])
            mMapChanged(direction, before[direction], after[direction]);
    }
}

void ChannelRouting::SetMap(const ChannelMap& map, AudioFilter::Direction direction) {
    const ChannelMap after = Clean(map, direction);
    if (after == mMaps[direction]) return;
    const ChannelMap before = mMaps[direction];
    mMaps[direction] = after;
    PassMapsOn();
    mMapChanged(direction, before, after);
}

ChannelMap ChannelRouting::Assign(AudioFilter::Direction direction, int effectChannel, int targetChannel) const {
    ChannelMap map = mMaps[direction];
    const auto found = map.find(effectChannel);
    if (found == map.end()) return map;
    const bool exists = targetChannel >= 0 && targetChannel < CountTargets(direction);
    if (exists) {
        for (auto& [channel, target] : map)
            if (target == targetChannel) target = kNotConnected;
    }
    found->second = exists ? targetChannel : kNotConnected;
    return map;
}

int ChannelRouting::CountTargets(AudioFilter::Direction direction) const {
    // A side-chain is listened to, nothing comes back on it.
    const std::size_t sideChain = direction == AudioFilter::kInput ? mSideChain.GetLayout().size() : 0;
    return static_cast<int>(mTargetLayout.size() + sideChain);
}

ChannelMap ChannelRouting::Clean(const ChannelMap& map, AudioFilter::Direction direction) const {
    ChannelMap clean;
    for (int channel = 0; channel < mEffectChannels[direction]; ++channel) {
        const auto found = map.find(channel);
        const int target = found != map.end() ? found->second : kNotConnected;
        clean[channel] = target >= 0 && target < CountTargets(direction) ? target : kNotConnected;
    }
    return clean;
}

void ChannelRouting::PassMapsOn() {
    mRouter.SetMaps(mMaps[AudioFilter::kInput], mMaps[AudioFilter::kOutput], mTargetLayout.size());
}

}  // namespace zelaudiofilterhost
