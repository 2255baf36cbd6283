#pragma once

#include <cstddef>
#include <vector>

namespace tessaly {

/// Room for one block of sound: some channels, each with as many samples. Begins as silence.
class ChannelBuffers {
public:
    ChannelBuffers(std::size_t channelCount, int frames);
    ChannelBuffers(const ChannelBuffers&) = delete;
    ChannelBuffers& operator=(const ChannelBuffers&) = delete;

    /// One pointer per channel.
    float* const* GetChannels() const { return mChannels.data(); }
    std::size_t GetChannelCount() const { return mChannels.size(); }
    /// Puts silence behind the first `from` frames of `count` channels, from the channel `first` on.
    void Silence(std::size_t first, std::size_t count, int from);

private:
    const int mFrames;
    std::vector<float> mSamples;
    std::vector<float*> mChannels;
};

}  // namespace tessaly
