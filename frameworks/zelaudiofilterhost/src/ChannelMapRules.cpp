#include "ChannelMapRules.h"

#include <cstddef>
#include <set>

namespace zelaudiofilterhost {

using zelmediatypes::AudioChannelLabel;
using zelmediatypes::AudioChannelLayout;

namespace {

/// An effect channel, and what it is for.
struct EffectChannel {
    int index = 0;  ///< across all buses
    std::size_t bus = 0;
    AudioChannelLabel label = zelmediatypes::kChannelDiscrete;
};

std::vector<EffectChannel> ListChannels(const AudioFilterBusList& buses, AudioFilterBusDescription::Kind kind) {
    std::vector<EffectChannel> channels;
    int index = 0;
    for (std::size_t bus = 0; bus < buses.size(); ++bus) {
        for (const zelmediatypes::AudioChannelDescription& channel : buses[bus].GetLayout()) {
            if (buses[bus].GetKind() == kind) channels.push_back({index, bus, channel.label});
            ++index;
        }
    }
    return channels;
}

/// Mono is what comes out of the middle.
AudioChannelLabel GetPlace(AudioChannelLabel label) {
    return label == zelmediatypes::kChannelMono ? zelmediatypes::kChannelCenter : label;
}

bool HasNoPlaceOfItsOwn(AudioChannelLabel label) {
    return label == zelmediatypes::kChannelDiscrete || label == zelmediatypes::kChannelMono;
}

bool IsSideOfStereo(AudioChannelLabel label) {
    return label == zelmediatypes::kChannelLeft || label == zelmediatypes::kChannelRight;
}

/// Connects effect channels with the channels of one layout, none of these twice.
class Fitter {
public:
    explicit Fitter(const AudioChannelLayout& targets) : mTargets(targets) {}

    bool IsConnected(const EffectChannel& channel) const { return mMap.count(channel.index) != 0; }

    void ConnectByLabel(const std::vector<EffectChannel>& channels) {
        for (const EffectChannel& channel : channels) {
            if (channel.label == zelmediatypes::kChannelDiscrete) continue;
            const int target = FindFree(GetPlace(channel.label));
            if (target != kNotConnected) Connect(channel, target);
        }
    }

    /// Counted among `channels`.
    void ConnectByPosition(const std::vector<EffectChannel>& channels) {
        for (std::size_t i = 0; i < channels.size() && i < mTargets.size(); ++i) {
            const bool fits = HasNoPlaceOfItsOwn(channels[i].label) || HasNoPlaceOfItsOwn(mTargets[i].label);
            const int target = static_cast<int>(i);
            if (fits && !IsConnected(channels[i]) && mTaken.count(target) == 0) Connect(channels[i], target);
        }
    }

    /// Several may have it.
    void Share(const EffectChannel& channel, int target) { mMap[channel.index] = target; }
    bool IsTaken(int target) const { return mTaken.count(target) != 0; }

    const ChannelMap& GetMap() const { return mMap; }

private:
    int FindFree(AudioChannelLabel place) const {
        for (std::size_t i = 0; i < mTargets.size(); ++i) {
            const int target = static_cast<int>(i);
            if (GetPlace(mTargets[i].label) == place && mTaken.count(target) == 0) return target;
        }
        return kNotConnected;
    }

    void Connect(const EffectChannel& channel, int target) {
        mMap[channel.index] = target;
        mTaken.insert(target);
    }

    const AudioChannelLayout& mTargets;
    ChannelMap mMap;
    std::set<int> mTaken;
};

bool IsMono(const AudioChannelLayout& layout) {
    return layout.size() == 1 && layout.front().label == zelmediatypes::kChannelMono;
}

void ShareMonoTrack(const std::vector<EffectChannel>& channels, Fitter& fitter) {
    if (fitter.IsTaken(0)) return;
    for (const EffectChannel& channel : channels) {
        if (channel.bus == channels.front().bus && IsSideOfStereo(channel.label)) fitter.Share(channel, 0);
    }
}

}  // namespace

ChannelMap BuildBestFitMap(const AudioFilterBusList& buses, const AudioChannelLayout& targetLayout) {
    const std::vector<EffectChannel> channels = ListChannels(buses, AudioFilterBusDescription::kMain);
    Fitter fitter(targetLayout);
    fitter.ConnectByLabel(channels);
    if (IsMono(targetLayout)) ShareMonoTrack(channels, fitter);
    // Whoever shares the one channel of a mono track has left nothing of it.
    if (fitter.GetMap().empty() || !IsMono(targetLayout)) fitter.ConnectByPosition(channels);
    ChannelMap map = fitter.GetMap();
    const int count = CountChannels(buses);
    for (int channel = 0; channel < count; ++channel) map.emplace(channel, kNotConnected);
    return map;
}

ChannelMap ConnectSideChain(const ChannelMap& map, const AudioFilterBusList& inputBuses,
                            const AudioChannelLayout& sideChain, int firstTarget, bool replaceExisting) {
    const std::vector<EffectChannel> channels = ListChannels(inputBuses, AudioFilterBusDescription::kAuxiliary);
    Fitter fitter(sideChain);
    if (sideChain.size() == 1) {
        for (const EffectChannel& channel : channels) fitter.Share(channel, 0);
    } else {
        fitter.ConnectByLabel(channels);
        fitter.ConnectByPosition(channels);
    }
    ChannelMap connected = map;
    for (const EffectChannel& channel : channels) {
        const auto found = connected.find(channel.index);
        const bool keeps = !replaceExisting && found != connected.end() && found->second != kNotConnected;
        if (keeps) continue;
        const auto fit = fitter.GetMap().find(channel.index);
        connected[channel.index] = fit != fitter.GetMap().end() ? firstTarget + fit->second : kNotConnected;
    }
    return connected;
}

int CountChannels(const AudioFilterBusList& buses) {
    std::size_t count = 0;
    for (const AudioFilterBusDescription& bus : buses) count += bus.GetLayout().size();
    return static_cast<int>(count);
}

}  // namespace zelaudiofilterhost
