// A stereo effect with a mono side-chain input: the louder the side-chain, the quieter the rest.
#include <cmath>

#include "support/Vst3Plugin.h"

namespace {

using namespace zeltestplugins;

class SideChain : public Vst3Component {
public:
    using Vst3Component::Vst3Component;

protected:
    void Process(Vst::ProcessData& data) override {
        Vst3Component::Process(data);
        if (data.numInputs < 2 || data.inputs[1].numChannels < 1) return;
        for (int32 i = 0; i < data.numSamples; ++i) {
            const float level = std::min(1.0f, std::fabs(data.inputs[1].channelBuffers32[0][i]));
            for (int32 channel = 0; channel < data.outputs[0].numChannels; ++channel) {
                data.outputs[0].channelBuffers32[channel][i] *= 1.0f - level;
            }
        }
    }
};

class Factory : public Vst3Factory {
public:
    using Vst3Factory::Vst3Factory;

protected:
    Vst::IComponent* Make(const Vst3Facts& facts) override { return new SideChain(facts); }
};

}  // namespace

ZEL_VST3_MODULE

ZEL_VST3_FACTORY {
    static Factory factory(
        {{.name = "Zel Side Chain 3",
          .id = MakeId(4),
          .buses = {{Vst::kInput, 2, "Input"}, {Vst::kInput, 1, "Side-chain", true}, {Vst::kOutput, 2, "Output"}}}});
    return &factory;
}
