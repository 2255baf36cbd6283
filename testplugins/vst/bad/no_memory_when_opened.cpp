// Gets no memory when it is opened, as it would at a bad moment.
#include <new>

#include "support/Misbehaviour.h"
#include "support/Vst2Plugin.h"

namespace {

using namespace zeltestplugins;

class Bad : public Vst2Plugin {
public:
    explicit Bad(vst2::HostCallback host) : Vst2Plugin(host, {"no_memory_when_opened", 27, 2, 2}) {}

protected:
    std::intptr_t Dispatch(std::int32_t operation, std::int32_t index, std::intptr_t value, void* pointer,
                           float number) override {
        if (operation == vst2::kOpen) throw std::bad_alloc();
        return Vst2Plugin::Dispatch(operation, index, value, pointer, number);
    }
};

}  // namespace

ZEL_VST2_ENTRY { return (new Bad(host))->GetEffect(); }
