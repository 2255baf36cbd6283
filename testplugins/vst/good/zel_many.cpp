// Two thousand parameters: the first is the gain, each of the others trims it by up to half a hundred-thousandth.
#include "support/Vst2Plugin.h"

namespace {

using namespace zeltestplugins;

constexpr std::size_t kCount = 2000;
constexpr float kTrim = 1e-5f;

class Many : public Vst2Plugin {
public:
    explicit Many(vst2::HostCallback host)
        : Vst2Plugin(host, {"Zel Many", 0x5A4D616E, 2, 2, std::vector<const char*>(kCount, "")}) {}

protected:
    std::intptr_t Dispatch(std::int32_t operation, std::int32_t index, std::intptr_t value, void* pointer,
                           float number) override {
        if (operation == vst2::kGetParameterLabel) return Answer(pointer, 8, index == 0 ? "x" : "");
        if (operation != vst2::kGetParameterName || !HasParameter(index)) {
            return Vst2Plugin::Dispatch(operation, index, value, pointer, number);
        }
        if (index == 0) return Answer(pointer, 24, "Gain");
        std::snprintf(static_cast<char*>(pointer), 24, "Trim %d", index);
        return 1;
    }

    void Process(const float* const* inputs, float* const* outputs, std::int32_t frames) override {
        float gain = 2.0f * Value(0);
        for (std::size_t i = 1; i < kCount; ++i) gain += (Value(i) - 0.5f) * kTrim;
        for (std::int32_t i = 0; i < frames; ++i) {
            outputs[0][i] = gain * inputs[0][i];
            outputs[1][i] = gain * inputs[1][i];
        }
    }
};

}  // namespace

ZEL_VST2_ENTRY { return (new Many(host))->GetEffect(); }
