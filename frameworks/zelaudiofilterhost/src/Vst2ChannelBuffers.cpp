#include "Vst2ChannelBuffers.h"

#include <algorithm>
#include <new>

namespace zelaudiofilterhost {

namespace {

constexpr int kSpareBuffers = 2;

}  // namespace

Vst2ChannelBuffers::Vst2ChannelBuffers(int inputCount, int outputCount)
    : mInputCount(inputCount), mOutputCount(outputCount), mMaximumFrames(0) {}

bool Vst2ChannelBuffers::Allocate(int frames) {
    Free();
    const std::size_t samples =
        static_cast<std::size_t>(mInputCount + kSpareBuffers) * static_cast<std::size_t>(frames);
    if (samples > kMaxSamples) return false;
    try {
        mSamples.resize(samples);
        mMaximumFrames = frames;
        // Filled to the end, for an effect that raises its counts in the middle of a block.
        mInputs.assign(PluginComponentInfo::kMaxChannels, GetBuffer(mInputCount));
        mOutputs.assign(PluginComponentInfo::kMaxChannels, GetBuffer(mInputCount + 1));
    } catch (const std::bad_alloc&) {
        Free();
        return false;
    }
    return true;
}

void Vst2ChannelBuffers::Free() {
    mMaximumFrames = 0;
    std::vector<float>().swap(mSamples);
    std::vector<float*>().swap(mInputs);
    std::vector<float*>().swap(mOutputs);
}

void Vst2ChannelBuffers::Load(const float* const* inputs, float* const* outputs, int frames, int usedInputs,
                              int usedOutputs) {
    for (int channel = 0; channel < mInputCount; ++channel) {
        float* const buffer = GetBuffer(channel);
        std::copy_n(inputs[channel], frames, buffer);
        mInputs[static_cast<std::size_t>(channel)] = buffer;
    }
    std::copy_n(outputs, mOutputCount, mOutputs.begin());
    // Effects have been seen to move the pointers on and to write into what they read.
    if (usedInputs > mInputCount) {
        std::fill_n(GetBuffer(mInputCount), frames, 0.0f);
        std::fill(mInputs.begin() + mInputCount, mInputs.begin() + usedInputs, GetBuffer(mInputCount));
    }
    if (usedOutputs > mOutputCount) {
        std::fill(mOutputs.begin() + mOutputCount, mOutputs.begin() + usedOutputs, GetBuffer(mInputCount + 1));
    }
}

float* Vst2ChannelBuffers::GetBuffer(int index) {
    return mSamples.data() + static_cast<std::size_t>(index) * static_cast<std::size_t>(mMaximumFrames);
}

}  // namespace zelaudiofilterhost
