// An instrument: no inputs, a sine at the pitch and level that its parameters say.
#include <cmath>

#include "support/Vst2Plugin.h"

namespace {

using namespace zeltestplugins;

class Synth : public Vst2Plugin {
public:
    explicit Synth(vst2::HostCallback host)
        : Vst2Plugin(host, {"Zel Synth", 0x5A53796E, 0, 2, {"Pitch", "Level"}, vst2::kCategorySynth, 17}) {}

protected:
    void Process(const float* const*, float* const* outputs, std::int32_t frames) override {
        const double step = 6.283185307179586 * 220.0 * std::exp2(2.0 * double(Value(0))) / double(mSampleRate);
        for (std::int32_t i = 0; i < frames; ++i) {
            outputs[0][i] = outputs[1][i] = Value(1) * static_cast<float>(std::sin(mPhase));
            mPhase = std::fmod(mPhase + step, 6.283185307179586);
        }
    }

private:
    double mPhase = 0.0;
};

}  // namespace

ZEL_VST2_ENTRY { return (new Synth(host))->GetEffect(); }
