// An effect from before replacing was the rule: it adds half of its input to what is in its output, and the other way
// does nothing.
#include "support/Vst2Plugin.h"

namespace {

using namespace zeltestplugins;

class Adds : public Vst2Plugin {
public:
    explicit Adds(vst2::HostCallback host) : Vst2Plugin(host, {"Zel Adds", 0x5A416464, 1, 1}) {
        mEffect.flags &= ~vst2::kCanReplace;
        mEffect.processAccumulating = &OnAdd;
    }

protected:
    void Process(const float* const*, float* const*, std::int32_t) override {}

private:
    static void OnAdd(vst2::Effect*, float** inputs, float** outputs, std::int32_t frames) {
        for (std::int32_t i = 0; i < frames; ++i) outputs[0][i] += 0.5f * inputs[0][i];
    }
};

}  // namespace

ZEL_VST2_ENTRY { return (new Adds(host))->GetEffect(); }
