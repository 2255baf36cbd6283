#pragma once

#include <vector>

#include <zelaudiofilterhost/PluginComponentInfo.h>

namespace zelaudiofilterhost {

/// The channels that a VST2 effect is given for one block.
///
/// Inputs are copies, because effects write into their inputs. Behind the channels that there are, up to kMaxChannels
/// in each direction, come spare ones: an effect may raise its counts at any time and then reads and writes more
/// channels than it was made with. All spare inputs are one silent buffer, all spare outputs another that nobody reads.
class Vst2ChannelBuffers {
public:
    Vst2ChannelBuffers(int inputCount, int outputCount);

    int GetInputCount() const { return mInputCount; }
    int GetOutputCount() const { return mOutputCount; }

    /// Makes room for blocks of at most `frames` frames. False, and no room at all, when that would take more than
    /// kMaxSamples or memory is short.
    bool Allocate(int frames);
    void Free();
    int GetMaximumFrames() const { return mMaximumFrames; }

    /// Sets the channels up for one block of at most GetMaximumFrames frames. `usedInputs` and `usedOutputs`, up to
    /// kMaxChannels, are the counts that the effect has now.
    void Load(const float* const* inputs, float* const* outputs, int frames, int usedInputs, int usedOutputs);
    /// The channels, for the effect to do with as it likes; set up anew by each Load.
    float** GetInputs() { return mInputs.data(); }
    float** GetOutputs() { return mOutputs.data(); }

private:
    /// 256 MiB: enough for every channel at usual block sizes, and for usual channels at every block size.
    static constexpr std::size_t kMaxSamples = std::size_t(1) << 26;

    float* GetBuffer(int index);

    int mInputCount;
    int mOutputCount;
    int mMaximumFrames;
    std::vector<float> mSamples;
    std::vector<float*> mInputs;
    std::vector<float*> mOutputs;
};

}  // namespace zelaudiofilterhost
