// Lets an exception out whenever it is asked or told something of a parameter.
#include "support/Vst2Plugin.h"

namespace {

using namespace zeltestplugins;

class Bad : public Vst2Plugin {
public:
    explicit Bad(vst2::HostCallback host) : Vst2Plugin(host, {"throws_when_asked", 22, 2, 2, {"A", "B"}}) {}

protected:
    std::intptr_t Dispatch(std::int32_t operation, std::int32_t index, std::intptr_t value, void* pointer,
                           float number) override {
        switch (operation) {
            case vst2::kGetParameterName:
            case vst2::kGetParameterLabel:
            case vst2::kGetParameterDisplay:
                Answer(pointer, 8, "half");
                throw 7;
            default:
                return Vst2Plugin::Dispatch(operation, index, value, pointer, number);
        }
    }
    void SetParameter(std::int32_t, float) override { throw 7; }
    float GetParameter(std::int32_t) override { throw 7; }
};

}  // namespace

ZEL_VST2_ENTRY { return (new Bad(host))->GetEffect(); }
