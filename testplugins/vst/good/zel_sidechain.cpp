// Four inputs, two outputs: the first pair gets quieter as the second, the side-chain, gets louder.
#include <cmath>

#include "support/Vst2Plugin.h"

namespace {

using namespace zeltestplugins;

class SideChain : public Vst2Plugin {
public:
    explicit SideChain(vst2::HostCallback host) : Vst2Plugin(host, {"Zel Side Chain", 0x5A536964, 4, 2, {"Amount"}}) {}

protected:
    std::intptr_t Dispatch(std::int32_t operation, std::int32_t index, std::intptr_t value, void* pointer,
                           float number) override {
        constexpr const char* kLabels[] = {"Left", "Right", "Side-chain left", "Side-chain right"};
        if (operation != vst2::kGetInputProperties || index < 0 || index > 3) {
            return Vst2Plugin::Dispatch(operation, index, value, pointer, number);
        }
        auto* const pin = static_cast<vst2::PinProperties*>(pointer);
        return Answer(pin->label, sizeof(pin->label), kLabels[index]);
    }

    void Process(const float* const* inputs, float* const* outputs, std::int32_t frames) override {
        for (std::int32_t i = 0; i < frames; ++i) {
            const float level = std::min(1.0f, std::max(std::fabs(inputs[2][i]), std::fabs(inputs[3][i])));
            const float gain = 1.0f - Value(0) * level;
            outputs[0][i] = gain * inputs[0][i];
            outputs[1][i] = gain * inputs[1][i];
        }
    }
};

}  // namespace

ZEL_VST2_ENTRY { return (new SideChain(host))->GetEffect(); }
