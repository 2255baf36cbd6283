#include "Vst3FilterForTest.h"

#include <zelcore/Utf.h>

#include "DescribeForTest.h"

using namespace zelaudiofilterhost;

namespace zeltests {

std::vector<boost::intrusive_ptr<AudioFilterDescriptor>> ReadVst3(const std::string& path) {
    return AudioFilterDescriptor::ReadModule(PluginLocator(kTechnologyVST3, zelcore::utility::UTF8to16(path)));
}

boost::intrusive_ptr<AudioFilter> MakeVst3(const std::string& name) {
    return ReadVst3(TestPlugin("vst3/" + name + ".vst3")).at(0)->CreateFilter();
}

float ProcessOnes(AudioFilter& filter, int frames) {
    const Samples ones(static_cast<std::size_t>(frames), 1.0f);
    const auto inputCount = static_cast<std::size_t>(filter.GetEffectChannelCount(AudioFilter::kInput));
    const auto outputCount = static_cast<std::size_t>(filter.GetEffectChannelCount(AudioFilter::kOutput));
    const std::vector<const float*> inputs(inputCount, ones.data());
    std::vector<Samples> outputs(outputCount, Samples(ones.size()));
    std::vector<float*> outputPointers;
    for (Samples& output : outputs) outputPointers.push_back(output.data());
    filter.ProcessEffect(inputs.data(), outputPointers.data(), frames);
    return outputs.at(0).at(0);
}

Samples Scaled(Samples samples, float factor) {
    for (float& sample : samples) sample *= factor;
    return samples;
}

}  // namespace zeltests
