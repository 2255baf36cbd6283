#include "Vst2FilterForTest.h"

#include <gtest/gtest.h>
#include <zelcore/Utf.h>

#include "DescribeForTest.h"

using namespace zelaudiofilterhost;

namespace zeltests {

namespace {

constexpr float kRubbish = 77.0f;
constexpr int kBehind = 16;

}  // namespace

std::vector<boost::intrusive_ptr<AudioFilterDescriptor>> ReadVst(const std::string& name) {
    const std::string path = TestPlugin("vst/" + name + ZEL_MODULE);
    return AudioFilterDescriptor::ReadModule(PluginLocator(kTechnologyVST, zelcore::utility::UTF8to16(path)));
}

boost::intrusive_ptr<AudioFilter> MakeVst(const std::string& name, std::size_t component) {
    return ReadVst(name).at(component)->CreateFilter();
}

Samples Signal(int channel, int frames) {
    Samples samples;
    for (int i = 0; i < frames; ++i) {
        samples.push_back(static_cast<float>((i * 7 + channel * 13) % 64 - 31) / 64.0f);
    }
    return samples;
}

std::vector<Samples> Process(AudioFilter& filter, int frames) {
    std::vector<Samples> inputs;
    std::vector<const float*> inputPointers;
    for (int i = 0; i < filter.GetEffectChannelCount(AudioFilter::kInput); ++i) inputs.push_back(Signal(i, frames));
    for (const Samples& input : inputs) inputPointers.push_back(input.data());

    const auto outputCount = static_cast<std::size_t>(filter.GetEffectChannelCount(AudioFilter::kOutput));
    std::vector<Samples> outputs(outputCount, Samples(static_cast<std::size_t>(frames + kBehind), kRubbish));
    std::vector<float*> outputPointers;
    for (Samples& output : outputs) outputPointers.push_back(output.data());

    filter.ProcessEffect(inputPointers.data(), outputPointers.data(), frames);

    for (std::size_t i = 0; i < inputs.size(); ++i) EXPECT_EQ(inputs[i], Signal(static_cast<int>(i), frames));
    for (Samples& output : outputs) {
        EXPECT_EQ(Samples(output.begin() + frames, output.end()), Samples(kBehind, kRubbish));
        output.resize(static_cast<std::size_t>(frames));
    }
    return outputs;
}

}  // namespace zeltests
