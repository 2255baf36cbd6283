// Lets an exception out when it is switched on.
#include "support/Vst2Plugin.h"

namespace {

using namespace zeltestplugins;

class Bad : public Vst2Plugin {
public:
    explicit Bad(vst2::HostCallback host) : Vst2Plugin(host, {"throws_when_started", 21, 2, 2, {"Is on"}}) {
        mValues[0] = 0.0f;
    }

protected:
    std::intptr_t Dispatch(std::int32_t operation, std::int32_t index, std::intptr_t value, void* pointer,
                           float number) override {
        if (operation != vst2::kMainsChanged) return Vst2Plugin::Dispatch(operation, index, value, pointer, number);
        mValues[0] = value != 0 ? 1.0f : 0.0f;
        if (value != 0) throw 7;
        return 0;
    }
};

}  // namespace

ZEL_VST2_ENTRY { return (new Bad(host))->GetEffect(); }
