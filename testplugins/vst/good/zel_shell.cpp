// A shell: one file with three plug-ins, the last an instrument. Which one is made is what the host says it wants.
#include "support/Vst2Plugin.h"

namespace {

using namespace zeltestplugins;

const Vst2Facts kContents[] = {{"Shell Mono", 0x5A536831, 1, 1, {"Level"}},
                               {"Shell Stereo", 0x5A536832, 2, 2, {"Left", "Right"}},
                               {"Shell Tone", 0x5A536833, 0, 2, {"Pitch"}, vst2::kCategorySynth}};

class Shell : public Vst2Plugin {
public:
    explicit Shell(vst2::HostCallback host)
        : Vst2Plugin(host, {"Zel Shell", 0x5A536830, 0, 0, {}, vst2::kCategoryShell}) {}

protected:
    std::intptr_t Dispatch(std::int32_t operation, std::int32_t index, std::intptr_t value, void* pointer,
                           float number) override {
        if (operation != vst2::kShellGetNextPlugin) {
            return Vst2Plugin::Dispatch(operation, index, value, pointer, number);
        }
        if (mNext == std::size(kContents)) return 0;
        Answer(pointer, 64, kContents[mNext].name);
        return kContents[mNext++].id;
    }

private:
    std::size_t mNext = 0;
};

}  // namespace

ZEL_VST2_ENTRY {
    const std::intptr_t wanted = host(nullptr, vst2::kHostCurrentId, 0, 0, nullptr, 0.0f);
    for (const Vst2Facts& facts : kContents) {
        if (facts.id == wanted) return (new Vst2Plugin(host, facts))->GetEffect();
    }
    return wanted == 0 ? (new Shell(host))->GetEffect() : nullptr;
}
