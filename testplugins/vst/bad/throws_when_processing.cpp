// Leaves half a block in its outputs and lets an exception out, whenever it is given sound.
#include "support/Vst2Plugin.h"

namespace {

using namespace zeltestplugins;

class Bad : public Vst2Plugin {
public:
    explicit Bad(vst2::HostCallback host) : Vst2Plugin(host, {"throws_when_processing", 20, 2, 2}) {}

protected:
    void Process(const float* const* inputs, float* const* outputs, std::int32_t frames) override {
        std::copy_n(inputs[0], frames / 2, outputs[0]);
        throw 7;
    }
};

}  // namespace

ZEL_VST2_ENTRY { return (new Bad(host))->GetEffect(); }
