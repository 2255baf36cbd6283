// An effect that hosts may also offer as an instrument: it multiplies its input with a sine.
#include <cmath>

#include "support/Vst3Plugin.h"

namespace {

using namespace zeltestplugins;

class Ring : public Vst3Component {
public:
    using Vst3Component::Vst3Component;

protected:
    void Process(Vst::ProcessData& data) override {
        const double step = 6.283185307179586 * 110.0 * std::exp2(2.0 * mValues[0]) / mSampleRate;
        for (int32 i = 0; i < data.numSamples; ++i) {
            const float level = static_cast<float>(std::sin(mPhase));
            for (int32 channel = 0; channel < data.outputs[0].numChannels; ++channel) {
                data.outputs[0].channelBuffers32[channel][i] *= level;
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
    Vst::IComponent* Make(const Vst3Facts& facts) override { return new Ring(facts); }
};

}  // namespace

ZEL_VST3_MODULE

ZEL_VST3_FACTORY {
    static Factory factory(
        {{.name = "Zel Ring 3", .id = MakeId(9), .subCategories = "Fx|Instrument", .parameters = {"Pitch"}}});
    return &factory;
}
