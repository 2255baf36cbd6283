// Takes memory without end when it is opened.
#include "support/Misbehaviour.h"
#include "support/Vst2Plugin.h"

namespace {

using namespace zeltestplugins;

class Bad : public Vst2Plugin {
public:
    explicit Bad(vst2::HostCallback host) : Vst2Plugin(host, {"allocate_when_opened", 15, 2, 2}) {}

protected:
    std::intptr_t Dispatch(std::int32_t operation, std::int32_t index, std::intptr_t value, void* pointer,
                           float number) override {
        if (operation == vst2::kOpen) AllocateForever();
        return Vst2Plugin::Dispatch(operation, index, value, pointer, number);
    }
};

}  // namespace

ZEL_VST2_ENTRY { return (new Bad(host))->GetEffect(); }
