#include "Vst3BusBuffers.h"

#include <numeric>

namespace zelaudiofilterhost {

void Vst3BusBuffers::Set(const std::vector<Steinberg::int32>& channelCounts) {
    mCounts.assign(channelCounts.begin(), channelCounts.end());
    mChannels.assign(std::accumulate(mCounts.begin(), mCounts.end(), std::size_t(0)), nullptr);
    mBuses.assign(mCounts.size(), Steinberg::Vst::AudioBusBuffers());
    Reset();
}

void Vst3BusBuffers::Reset() {
    float** channels = mChannels.data();
    for (std::size_t bus = 0; bus < mBuses.size(); ++bus) {
        mBuses[bus].numChannels = static_cast<Steinberg::int32>(mCounts[bus]);
        mBuses[bus].silenceFlags = 0;
        mBuses[bus].channelBuffers32 = channels;
        channels += mCounts[bus];
    }
}

}  // namespace zelaudiofilterhost
