// A stereo gain with four parameters: the plain case.
#include "support/Vst2Plugin.h"

namespace {

using namespace zeltestplugins;

class Gain : public Vst2Plugin {
public:
    explicit Gain(vst2::HostCallback host)
        : Vst2Plugin(host, {"Zel Gain", 0x5A476169, 2, 2, {"Gain", "Balance", "Width", "Mute"}}) {
        mValues = {0.5f, 0.5f, 1.0f, 0.0f};
    }

protected:
    void Process(const float* const* inputs, float* const* outputs, std::int32_t frames) override {
        const float gain = Value(3) >= 0.5f ? 0.0f : Value(0) * 2.0f;
        const float left = gain * std::min(1.0f, 2.0f - 2.0f * Value(1));
        const float right = gain * std::min(1.0f, 2.0f * Value(1));
        for (std::int32_t i = 0; i < frames; ++i) {
            const float middle = (inputs[0][i] + inputs[1][i]) * 0.5f;
            const float side = (inputs[0][i] - inputs[1][i]) * 0.5f * Value(2);
            outputs[0][i] = left * (middle + side);
            outputs[1][i] = right * (middle - side);
        }
    }
};

}  // namespace

ZEL_VST2_ENTRY { return (new Gain(host))->GetEffect(); }
