#include "Vst3BusBuffers.h"

namespace zelaudiofilterhost {

void Vst3BusBuffers::Set(const AudioFilterBusList& buses) {
    mCounts.clear();
    std::size_t channels = 0;
    for (const AudioFilterBusDescription& bus : buses) {
        mCounts.push_back(bus.GetLayout().size());
        channels += mCounts.back();
    }
    mChannels.assign(channels, nullptr);
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
