#include "ChannelRouter.h"

#include <algorithm>
#include <new>
#include <utility>

namespace zelaudiofilterhost {

namespace {

/// 256 MiB: the longest blocks with 64 channels, or 65,536 frames with the most channels.
constexpr std::size_t kMaxSamples = std::size_t(1) << 26;

void Pass(const float* input, float* output, std::size_t frames) {
    if (output != input) std::copy_n(input, frames, output);
}

}  // namespace

ChannelRouter::ChannelRouter() : mMaximumFrames(0) {}

void ChannelRouter::SetMaps(const ChannelMap& inputs, const ChannelMap& outputs, std::size_t mainTargets) {
    Routes routes;
    routes.targets.resize(mainTargets);
    routes.effectOutputs = outputs.size();
    const auto isMain = [mainTargets](int target) {
        return target >= 0 && static_cast<std::size_t>(target) < mainTargets;
    };
    for (const auto& [channel, target] : inputs) {
        routes.effectInputs.push_back(target);
        if (isMain(target)) routes.targets[static_cast<std::size_t>(target)].feedsEffect = true;
    }
    for (const auto& [channel, target] : outputs) {
        if (isMain(target)) routes.targets[static_cast<std::size_t>(target)].sources.push_back(channel);
    }
    mRoutes.Publish(std::move(routes));
}

bool ChannelRouter::Allocate(int inputChannels, int outputChannels, int maximumFrames) {
    Free();
    const auto outputs = static_cast<std::size_t>(outputChannels);
    const auto frames = static_cast<std::size_t>(maximumFrames);
    if (outputs * frames > kMaxSamples) return false;
    try {
        mSamples.assign((outputs + 1) * frames, 0.0f);
        mEffectInputs.assign(static_cast<std::size_t>(inputChannels), nullptr);
        mEffectOutputs.assign(outputs, nullptr);
    } catch (const std::bad_alloc&) {
        Free();
        return false;
    }
    for (std::size_t i = 0; i < outputs; ++i) mEffectOutputs[i] = &mSamples[i * frames];
    mMaximumFrames = maximumFrames;
    return true;
}

void ChannelRouter::Free() {
    mMaximumFrames = 0;
    std::vector<float>().swap(mSamples);
    std::vector<const float*>().swap(mEffectInputs);
    std::vector<float*>().swap(mEffectOutputs);
}

void ChannelRouter::Process(AudioFilter& filter, const float* const* inputs, float* const* outputs, int frames) {
    if (frames <= 0) return;
    const Routes& routes = mRoutes.Take();
    const bool runs = frames <= mMaximumFrames && routes.effectInputs.size() == mEffectInputs.size() &&
                      routes.effectOutputs == mEffectOutputs.size();
    if (runs) RunEffect(filter, routes, inputs, frames);
    for (std::size_t i = 0; i < routes.targets.size(); ++i) {
        const auto count = static_cast<std::size_t>(frames);
        if (runs)
            Deliver(routes.targets[i], inputs[i], outputs[i], count);
        else
            Pass(inputs[i], outputs[i], count);
    }
}

void ChannelRouter::RunEffect(AudioFilter& filter, const Routes& routes, const float* const* inputs, int frames) {
    const float* const silence = mSamples.data() + mEffectOutputs.size() * static_cast<std::size_t>(mMaximumFrames);
    for (std::size_t i = 0; i < mEffectInputs.size(); ++i) {
        const int target = routes.effectInputs[i];
        mEffectInputs[i] = target != kNotConnected ? inputs[target] : silence;
    }
    filter.ProcessEffect(mEffectInputs.data(), mEffectOutputs.data(), frames);
}

void ChannelRouter::Deliver(const Target& target, const float* input, float* output, std::size_t frames) const {
    if (target.sources.empty()) {
        if (target.feedsEffect)
            std::fill_n(output, frames, 0.0f);
        else
            Pass(input, output, frames);
        return;
    }
    std::copy_n(mEffectOutputs[static_cast<std::size_t>(target.sources.front())], frames, output);
    if (target.sources.size() == 1) return;
    for (std::size_t i = 1; i < target.sources.size(); ++i) {
        const float* const source = mEffectOutputs[static_cast<std::size_t>(target.sources[i])];
        for (std::size_t frame = 0; frame < frames; ++frame) output[frame] += source[frame];
    }
    const float share = 1.0f / static_cast<float>(target.sources.size());
    for (std::size_t frame = 0; frame < frames; ++frame) output[frame] *= share;
}

}  // namespace zelaudiofilterhost
