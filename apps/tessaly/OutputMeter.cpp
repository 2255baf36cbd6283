#include "OutputMeter.h"

#include <algorithm>
#include <cmath>
#include <cstdio>

namespace tessaly {

OutputMeter::OutputMeter(std::size_t channelCount) : mPeaks(channelCount), mNotFinite(0), mOver(0) {}

void OutputMeter::Process(float* const* channels, int frames) {
    for (std::size_t channel = 0; channel < mPeaks.size(); ++channel) {
        for (int i = 0; i < frames; ++i) {
            float& sample = channels[channel][i];
            if (!std::isfinite(sample)) {
                sample = 0.0f;
                ++mNotFinite;
            }
            const float level = std::fabs(sample);
            mPeaks[channel] = std::max(mPeaks[channel], level);
            if (level > 1.0f) ++mOver;
        }
    }
}

std::string OutputMeter::GetPeakText(std::size_t channel) const {
    const auto peak = static_cast<double>(mPeaks[channel]);
    if (peak == 0.0) return "silence";
    char text[32];
    // Zero is added to what rounding may leave: zero with a minus before it.
    std::snprintf(text, sizeof text, "%.1f dBFS", std::round(200.0 * std::log10(peak)) / 10.0 + 0.0);
    return text;
}

}  // namespace tessaly
