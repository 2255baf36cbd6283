#include "ChannelBuffers.h"

#include <algorithm>

namespace tessaly {

ChannelBuffers::ChannelBuffers(std::size_t channelCount, int frames)
    : mFrames(frames), mSamples(channelCount * static_cast<std::size_t>(frames)), mChannels(channelCount) {
    for (std::size_t i = 0; i < channelCount; ++i) mChannels[i] = &mSamples[i * static_cast<std::size_t>(frames)];
}

void ChannelBuffers::Silence(std::size_t first, std::size_t count, int from) {
    for (std::size_t i = first; i < first + count; ++i) std::fill(mChannels[i] + from, mChannels[i] + mFrames, 0.0f);
}

}  // namespace tessaly
