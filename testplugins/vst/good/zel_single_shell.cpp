// A shell with one plug-in, which has another id of its own than the shell's list gives it.
#include "support/Vst2Plugin.h"

namespace {

using namespace zeltestplugins;

constexpr std::int32_t kListedId = 0x5A533131;
constexpr std::int32_t kOwnId = 0x5A533132;

class Shell : public Vst2Plugin {
public:
    explicit Shell(vst2::HostCallback host)
        : Vst2Plugin(host, {"Zel Single Shell", 0x5A533130, 0, 0, {}, vst2::kCategoryShell}) {}

protected:
    std::intptr_t Dispatch(std::int32_t operation, std::int32_t index, std::intptr_t value, void* pointer,
                           float number) override {
        if (operation != vst2::kShellGetNextPlugin) {
            return Vst2Plugin::Dispatch(operation, index, value, pointer, number);
        }
        if (mIsListed) return 0;
        mIsListed = true;
        Answer(pointer, 64, "Single");
        return kListedId;
    }

private:
    bool mIsListed = false;
};

}  // namespace

ZEL_VST2_ENTRY {
    const std::intptr_t wanted = host(nullptr, vst2::kHostCurrentId, 0, 0, nullptr, 0.0f);
    if (wanted == kListedId) return (new Vst2Plugin(host, {"Single", kOwnId, 2, 2, {"Level"}}))->GetEffect();
    return wanted == 0 ? (new Shell(host))->GetEffect() : nullptr;
}
