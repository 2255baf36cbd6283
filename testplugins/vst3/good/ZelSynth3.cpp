// An instrument: no inputs, a sine at the pitch that its parameter says. Component and controller are one class.
#include <cmath>

#include "support/Vst3Plugin.h"

namespace {

using namespace zeltestplugins;

class Synth : public Vst3Component {
public:
    using Vst3Component::Vst3Component;

protected:
    void Process(Vst::ProcessData& data) override {
        const double step = 6.283185307179586 * 220.0 * std::exp2(2.0 * mValues[0]) / mSampleRate;
        for (int32 i = 0; i < data.numSamples; ++i) {
            for (int32 channel = 0; channel < data.outputs[0].numChannels; ++channel) {
                data.outputs[0].channelBuffers32[channel][i] = static_cast<float>(0.5 * std::sin(mPhase));
            }
            mPhase = std::fmod(mPhase + step, 6.283185307179586);
        }
    }

private:
    double mPhase = 0.0;
};

class Factory : public Vst3Factory {
public:
    using Vst3Factory::Vst3Factory;

protected:
    Vst::IComponent* Make(const Vst3Facts& facts) override { return new Synth(facts); }
};

}  // namespace

ZEL_VST3_MODULE

ZEL_VST3_FACTORY {
    static Factory factory({{.name = "Zel Synth 3",
                             .id = MakeId(3),
                             .subCategories = "Instrument|Synth",
                             .buses = {{Vst::kOutput, 2, "Output"}},
                             .parameters = {"Pitch"}}});
    return &factory;
}
