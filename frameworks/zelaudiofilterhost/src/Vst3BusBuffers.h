#pragma once

#include <cstddef>
#include <vector>

#include <pluginterfaces/vst/ivstaudioprocessor.h>
#include <zelaudiofilterhost/AudioFilterBusDescription.h>

namespace zelaudiofilterhost {

/// The buses of one direction as a VST3 effect gets them with a block: a list of channel pointers for each. Only Set
/// allocates.
class Vst3BusBuffers {
public:
    void Set(const AudioFilterBusList& buses);

    std::size_t GetChannelCount() const { return mChannels.size(); }
    /// All that there is to be told anew with each block: effects may write into what they are given.
    /// `channel(index)` is the channel's samples, counted across all buses.
    template <typename Function>
    void Fill(Function channel) {
        for (std::size_t i = 0; i < mChannels.size(); ++i) mChannels[i] = channel(i);
        Reset();
    }
    Steinberg::Vst::AudioBusBuffers* GetBuses() { return mBuses.data(); }
    Steinberg::int32 GetBusCount() const { return static_cast<Steinberg::int32>(mBuses.size()); }

    /// Calls `function(index)` for each channel, counted across all buses, that the effect has flagged as silent.
    template <typename Function>
    void ForEachSilent(Function function) const {
        std::size_t first = 0;
        for (std::size_t bus = 0; bus < mBuses.size(); ++bus) {
            const std::size_t count = mCounts[bus];
            for (std::size_t i = 0; i < count && i < kFlags; ++i) {
                if ((mBuses[bus].silenceFlags >> i & 1) != 0) function(first + i);
            }
            first += count;
        }
    }

private:
    static constexpr std::size_t kFlags = 64;

    void Reset();

    std::vector<std::size_t> mCounts;
    std::vector<float*> mChannels;
    std::vector<Steinberg::Vst::AudioBusBuffers> mBuses;
};

}  // namespace zelaudiofilterhost
