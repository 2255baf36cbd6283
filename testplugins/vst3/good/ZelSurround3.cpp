// Effects that can have other speakers than stereo. "Any" takes what it is asked for, the same in and out, and keeps
// its mono key; "First" has two main buses in each direction and changes the first ones only. Each channel of the first
// bus comes out half as loud as the one before it.
#include "support/Vst3Plugin.h"

namespace {

using namespace zeltestplugins;

class Surround : public Vst3Component {
public:
    using Vst3Component::Vst3Component;

    tresult PLUGIN_API setBusArrangements(Vst::SpeakerArrangement* inputs, int32 inputCount,
                                          Vst::SpeakerArrangement* outputs, int32 outputCount) override {
        if (inputCount != getBusCount(Vst::kAudio, Vst::kInput)) return kInvalidArgument;
        if (outputCount != getBusCount(Vst::kAudio, Vst::kOutput)) return kInvalidArgument;
        if (inputs[0] != outputs[0] || inputs[0] == 0) return kResultFalse;
        for (int32 bus = 1; bus < inputCount; ++bus) {
            if (inputs[bus] != ArrangementOf(Vst::kInput, bus)) return kResultFalse;
        }
        for (int32 bus = 1; bus < outputCount; ++bus) {
            if (outputs[bus] != ArrangementOf(Vst::kOutput, bus)) return kResultFalse;
        }
        Arrange(Vst::kInput, 0, inputs[0]);
        Arrange(Vst::kOutput, 0, outputs[0]);
        return kResultOk;
    }

protected:
    void Process(Vst::ProcessData& data) override {
        Vst3Component::Process(data);
        float gain = 1.0f;
        for (int32 channel = 0; channel < data.outputs[0].numChannels; ++channel, gain *= 0.5f) {
            float* const output = data.outputs[0].channelBuffers32[channel];
            for (int32 i = 0; i < data.numSamples; ++i) output[i] *= gain;
        }
    }
};

class Factory : public Vst3Factory {
public:
    using Vst3Factory::Vst3Factory;

protected:
    Vst::IComponent* Make(const Vst3Facts& facts) override { return new Surround(facts); }
};

}  // namespace

ZEL_VST3_MODULE

ZEL_VST3_FACTORY {
    static Factory factory(
        {{.name = "Any",
          .id = MakeId(96),
          .buses = {{Vst::kInput, 2, "Input"}, {Vst::kInput, 1, "Key", true}, {Vst::kOutput, 2, "Output"}}},
         {.name = "First",
          .id = MakeId(97),
          .buses = {{Vst::kInput, 2, "Input"},
                    {Vst::kInput, 2, "Input 2"},
                    {Vst::kOutput, 2, "Output"},
                    {Vst::kOutput, 2, "Output 2"}}}});
    return &factory;
}
