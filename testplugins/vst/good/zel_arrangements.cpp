// A shell with one effect for each arrangement of speakers that there is a number for, of as many channels. Each names
// it with its first input, and says nothing of its outputs. Sound passes through.
#include "support/Vst2ShellPlugin.h"

namespace {

using namespace zeltestplugins;

constexpr std::int32_t kFirstId = 0x5A416101;
constexpr std::int32_t kChannels[] = {1, 2, 2, 2, 2, 2, 3, 3, 4, 4, 4, 4, 5, 5, 5,
                                      6, 6, 6, 7, 7, 7, 7, 8, 8, 8, 8, 9, 9, 12};
static_assert(std::size(kChannels) == vst2::kArrangements);

class Arranged : public Vst2Plugin {
public:
    using Vst2Plugin::Vst2Plugin;

protected:
    std::intptr_t Dispatch(std::int32_t operation, std::int32_t index, std::intptr_t value, void* pointer,
                           float number) override {
        if (operation != vst2::kGetInputProperties || index != 0) {
            return Vst2Plugin::Dispatch(operation, index, value, pointer, number);
        }
        auto* const pin = static_cast<vst2::PinProperties*>(pointer);
        pin->flags = vst2::kPinNamesSpeakers;
        pin->arrangement = mFacts.id - kFirstId;
        return 1;
    }
};

}  // namespace

ZEL_VST2_ENTRY {
    std::vector<Vst2Facts> contents;
    for (std::int32_t i = 0; i < vst2::kArrangements; ++i) {
        contents.push_back({"Arranged", kFirstId + i, kChannels[i], kChannels[i]});
    }
    return EnterShell(host, "Zel Arrangements", kFirstId - 1, contents,
                      [host](const Vst2Facts& facts) { return new Arranged(host, facts); });
}
