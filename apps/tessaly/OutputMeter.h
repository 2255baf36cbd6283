#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

namespace tessaly {

/// Watches over the sound that is written: how loud it gets, and that each sample is a number.
class OutputMeter {
public:
    explicit OutputMeter(std::size_t channelCount);

    /// Makes silence of samples that are no finite numbers, counts them, and measures the rest.
    void Process(float* const* channels, int frames);

    std::uint64_t GetNotFiniteCount() const { return mNotFinite; }
    /// Samples beyond full scale.
    std::uint64_t GetOverCount() const { return mOver; }
    /// The channel's loudest sample in decibels below full scale: "-6.0 dBFS", or "silence".
    std::string GetPeakText(std::size_t channel) const;

private:
    std::vector<float> mPeaks;
    std::uint64_t mNotFinite;
    std::uint64_t mOver;
};

}  // namespace tessaly
