#pragma once

#include <array>

#include <zelaudiofilterhost/AudioFilter.h>

#include "ChannelRouter.h"

namespace zelaudiofilterhost {

/// The track that a filter is in, and how the two are connected: the state behind AudioFilter's operations of the same
/// names, and its two signals. Main thread but for the router's Process.
class ChannelRouting {
public:
    ChannelRouting();

    /// How many channels the effect has now. What there was of connections for others is gone; tells nobody.
    void SetEffectChannels(int inputs, int outputs);
    int GetEffectChannels(AudioFilter::Direction direction) const { return mEffectChannels[direction]; }

    const zelmediatypes::AudioChannelLayout& GetTargetLayout() const { return mTargetLayout; }
    const AudioFilterBusDescription& GetSideChain() const { return mSideChain; }
    /// Sets another track, with these buses of the effect's. TellTarget has to follow.
    void SetTarget(const zelmediatypes::AudioChannelLayout& layout, const AudioFilterBusDescription& sideChain,
                   const AudioFilterBusList& inputs, const AudioFilterBusList& outputs);
    /// Calls the side-chain by another name; nothing else changes. TellTarget has to follow.
    void RenameSideChain(const AudioFilterBusDescription& sideChain) { mSideChain = sideChain; }
    /// Fires for what has changed since the maps were `before`.
    void TellTarget(const std::array<ChannelMap, 2>& before);
    const std::array<ChannelMap, 2>& GetMaps() const { return mMaps; }

    const ChannelMap& GetMap(AudioFilter::Direction direction) const { return mMaps[direction]; }
    /// Fires.
    void SetMap(const ChannelMap& map, AudioFilter::Direction direction);
    /// `map` with what AudioFilter::AssignChannelMapping does to it.
    ChannelMap Assign(AudioFilter::Direction direction, int effectChannel, int targetChannel) const;

    ChannelRouter& GetRouter() { return mRouter; }
    AudioFilter::ChannelMapChangedSignal& GetMapChangedSignal() { return mMapChanged; }
    AudioFilter::TargetFormatChangedSignal& GetTargetChangedSignal() { return mTargetChanged; }

private:
    int CountTargets(AudioFilter::Direction direction) const;
    ChannelMap Clean(const ChannelMap& map, AudioFilter::Direction direction) const;
    void PassMapsOn();

    std::array<int, 2> mEffectChannels;
    zelmediatypes::AudioChannelLayout mTargetLayout;
    AudioFilterBusDescription mSideChain;
    std::array<ChannelMap, 2> mMaps;
    ChannelRouter mRouter;
    AudioFilter::ChannelMapChangedSignal mMapChanged;
    AudioFilter::TargetFormatChangedSignal mTargetChanged;
};

}  // namespace zelaudiofilterhost
