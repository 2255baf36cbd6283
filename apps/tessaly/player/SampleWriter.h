#pragma once

#include <cstddef>
#include <vector>

namespace tessaly {

/// Puts sound into the form that a device takes: so many channels beside each other, of numbers of some kind. Any
/// thread.
///
/// A device with more channels than the sound gets silence in the others, but mono is heard on the left and the right.
/// One with fewer gets the first ones.
class SampleWriter {
public:
    enum Kind { kUnsigned8, kSigned16, kSigned32, kFloat };

    SampleWriter(Kind kind, std::size_t soundChannels, std::size_t deviceChannels);

    /// Bytes of one frame.
    std::size_t GetFrameSize() const;
    /// Writes `frames` frames to `bytes`, which need not be aligned. What is beyond full scale is held there, but for
    /// floats, which the device's system mixes.
    void Write(const float* const* channels, int frames, char* bytes) const;

private:
    template <typename Sample, typename Convert>
    void WriteAs(const float* const* channels, int frames, char* bytes, Convert convert) const;

    static constexpr std::size_t kSilent = static_cast<std::size_t>(-1);

    const Kind mKind;
    std::vector<std::size_t> mSources;  ///< of each device channel: the channel that it gets, or kSilent
};

}  // namespace tessaly
