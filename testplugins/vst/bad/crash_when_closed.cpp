// Describes itself well and crashes when it is closed.
#include "support/Misbehaviour.h"
#include "support/Vst2Plugin.h"

namespace {

using namespace zeltestplugins;

class Bad : public Vst2Plugin {
public:
    explicit Bad(vst2::HostCallback host) : Vst2Plugin(host, {"crash_when_closed", 11, 2, 2}) {}

protected:
    std::intptr_t Dispatch(std::int32_t operation, std::int32_t index, std::intptr_t value, void* pointer,
                           float number) override {
        if (operation == vst2::kClose) Crash();
        return Vst2Plugin::Dispatch(operation, index, value, pointer, number);
    }
};

}  // namespace

ZEL_VST2_ENTRY { return (new Bad(host))->GetEffect(); }
