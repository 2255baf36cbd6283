// The values of its parameters are no numbers, or out of range, and so is what it makes of sound.
#include <cmath>

#include "support/Vst2Plugin.h"

namespace {

using namespace zeltestplugins;

const std::vector<float> kValues = {std::nanf(""), HUGE_VALF, -HUGE_VALF, -3.0f, 7.0f};

class Bad : public Vst2Plugin {
public:
    explicit Bad(vst2::HostCallback host)
        : Vst2Plugin(host, {"nonsense_values", 23, 1, 1, {"No number", "Infinite", "Minus infinite", "Low", "High"}}) {}

protected:
    float GetParameter(std::int32_t index) override { return kValues[static_cast<std::size_t>(index)]; }
    void Process(const float* const*, float* const* outputs, std::int32_t frames) override {
        std::fill_n(outputs[0], frames, kValues[0]);
    }
};

}  // namespace

ZEL_VST2_ENTRY { return (new Bad(host))->GetEffect(); }
