// A stereo effect without parameters and without a controller: turns the sound over, and does so in its inputs. It
// passes silence on by the flags alone and leaves nonsense in the buffers. Runs at usual sample rates only.
#include "support/Vst3Plugin.h"

namespace {

using namespace zeltestplugins;

class Plain : public Vst3Component {
public:
    using Vst3Component::Vst3Component;

    tresult PLUGIN_API initialize(FUnknown*) override { return kResultOk; }
    tresult PLUGIN_API setupProcessing(Vst::ProcessSetup& setup) override {
        return setup.sampleRate >= 8000.0 && setup.sampleRate <= 384000.0 ? kResultOk : kResultFalse;
    }

protected:
    void Process(Vst::ProcessData& data) override {
        bool silent = true;
        for (int32 channel = 0; channel < data.inputs[0].numChannels; ++channel) {
            float* const input = data.inputs[0].channelBuffers32[channel];
            for (int32 i = 0; i < data.numSamples; ++i) {
                input[i] = -input[i];
                silent = silent && input[i] == 0.0f;
            }
        }
        Vst3Component::Process(data);
        if (!silent) return;
        data.outputs[0].silenceFlags = 3;
        for (int32 channel = 0; channel < data.outputs[0].numChannels; ++channel) {
            std::fill_n(data.outputs[0].channelBuffers32[channel], data.numSamples, 0.75f);
        }
    }
};

class Factory : public Vst3Factory {
public:
    using Vst3Factory::Vst3Factory;

protected:
    Vst::IComponent* Make(const Vst3Facts& facts) override { return new Plain(facts); }
};

}  // namespace

ZEL_VST3_MODULE

ZEL_VST3_FACTORY {
    static Factory factory({{.name = "Zel Plain 3", .id = MakeId(43)}});
    return &factory;
}
