// A stereo gain with two parameters and a controller of its own class: the plain case.
#include "support/Vst3Plugin.h"

namespace {

using namespace zeltestplugins;

class Gain : public Vst3Component {
public:
    using Vst3Component::Vst3Component;

protected:
    void Process(Vst::ProcessData& data) override {
        Vst3Component::Process(data);
        const double gain = mValues[1] > 0.5 ? 0.0 : mValues[0] * 2.0;
        for (int32 channel = 0; channel < data.outputs[0].numChannels; ++channel) {
            float* const output = data.outputs[0].channelBuffers32[channel];
            for (int32 i = 0; i < data.numSamples; ++i) output[i] *= static_cast<float>(gain);
        }
    }
};

class Factory : public Vst3Factory {
public:
    using Vst3Factory::Vst3Factory;

protected:
    Vst::IComponent* Make(const Vst3Facts& facts) override { return new Gain(facts); }
};

}  // namespace

ZEL_VST3_MODULE

ZEL_VST3_FACTORY {
    static Factory factory({{.name = "Zel Gain 3",
                             .id = MakeId(1),
                             .subCategories = "Fx|Dynamics",
                             .parameters = {"Gain", "Mute"},
                             .controllerId = MakeId(2)}});
    return &factory;
}
