// A shell that always has one more plug-in.
#include "support/Vst2Plugin.h"

namespace {

using namespace zeltestplugins;

class EndlessShell : public Vst2Plugin {
public:
    explicit EndlessShell(vst2::HostCallback host)
        : Vst2Plugin(host, {"Endless Shell", 20, 0, 0, {}, vst2::kCategoryShell}) {}

protected:
    std::intptr_t Dispatch(std::int32_t operation, std::int32_t index, std::intptr_t value, void* pointer,
                           float number) override {
        if (operation == vst2::kShellGetNextPlugin) return ++mLast;
        return Vst2Plugin::Dispatch(operation, index, value, pointer, number);
    }

private:
    std::int32_t mLast = 1000;
};

}  // namespace

ZEL_VST2_ENTRY {
    const std::intptr_t wanted = host(nullptr, vst2::kHostCurrentId, 0, 0, nullptr, 0.0f);
    if (wanted == 0) return (new EndlessShell(host))->GetEffect();
    return (new Vst2Plugin(host, {"One of many", static_cast<std::int32_t>(wanted), 2, 2}))->GetEffect();
}
