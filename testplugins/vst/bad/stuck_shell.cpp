// A shell whose list never moves on, and whose one plug-in cannot be made.
#include "support/Vst2Plugin.h"

namespace {

using namespace zeltestplugins;

class StuckShell : public Vst2Plugin {
public:
    explicit StuckShell(vst2::HostCallback host)
        : Vst2Plugin(host, {"Stuck Shell", 21, 0, 0, {}, vst2::kCategoryShell}) {}

protected:
    std::intptr_t Dispatch(std::int32_t operation, std::int32_t index, std::intptr_t value, void* pointer,
                           float number) override {
        if (operation == vst2::kShellGetNextPlugin) return 77;
        return Vst2Plugin::Dispatch(operation, index, value, pointer, number);
    }
};

}  // namespace

ZEL_VST2_ENTRY {
    const std::intptr_t wanted = host(nullptr, vst2::kHostCurrentId, 0, 0, nullptr, 0.0f);
    return wanted == 0 ? (new StuckShell(host))->GetEffect() : nullptr;
}
