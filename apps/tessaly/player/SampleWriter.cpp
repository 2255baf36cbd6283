#include "SampleWriter.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <cstring>

namespace tessaly {

namespace {

double Scale(float sample, double fullScale) {
    return std::round(std::clamp(static_cast<double>(sample), -1.0, 1.0) * fullScale);
}

}  // namespace

SampleWriter::SampleWriter(Kind kind, std::size_t soundChannels, std::size_t deviceChannels)
    : mKind(kind), mSources(deviceChannels, kSilent) {
    for (std::size_t i = 0; i < std::min(soundChannels, deviceChannels); ++i) mSources[i] = i;
    if (soundChannels == 1 && deviceChannels > 1) mSources[1] = 0;
}

std::size_t SampleWriter::GetFrameSize() const {
    constexpr std::size_t kSizes[] = {1, 2, 4, 4};
    return kSizes[mKind] * mSources.size();
}

void SampleWriter::Write(const float* const* channels, int frames, char* bytes) const {
    switch (mKind) {
        case kUnsigned8:
            WriteAs<std::uint8_t>(channels, frames, bytes,
                                  [](float sample) { return static_cast<std::uint8_t>(128.0 + Scale(sample, 127.0)); });
            break;
        case kSigned16:
            WriteAs<std::int16_t>(channels, frames, bytes,
                                  [](float sample) { return static_cast<std::int16_t>(Scale(sample, 32767.0)); });
            break;
        case kSigned32:
            WriteAs<std::int32_t>(channels, frames, bytes,
                                  [](float sample) { return static_cast<std::int32_t>(Scale(sample, 2147483647.0)); });
            break;
        case kFloat:
            WriteAs<float>(channels, frames, bytes, [](float sample) { return sample; });
            break;
    }
}

template <typename Sample, typename Convert>
void SampleWriter::WriteAs(const float* const* channels, int frames, char* bytes, Convert convert) const {
    for (int i = 0; i < frames; ++i) {
        for (const std::size_t source : mSources) {
            const Sample sample = convert(source == kSilent ? 0.0f : channels[source][i]);
            std::memcpy(bytes, &sample, sizeof sample);
            bytes += sizeof sample;
        }
    }
}

}  // namespace tessaly
