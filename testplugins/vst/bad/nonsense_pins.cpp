// A shell of stereo effects with a side-chain that say nonsense of their channels' speakers. Sound passes through.
#include <limits>
#include <stdexcept>

#include "support/Vst2ShellPlugin.h"

namespace {

using namespace zeltestplugins;

/// More than the answer's size, as many real plug-ins write.
constexpr std::size_t kTooMuch = 1000;

class Nonsense : public Vst2Plugin {
public:
    using Vst2Plugin::Vst2Plugin;

protected:
    std::intptr_t Dispatch(std::int32_t operation, std::int32_t index, std::intptr_t value, void* pointer,
                           float number) override {
        if (operation != vst2::kGetInputProperties && operation != vst2::kGetOutputProperties) {
            return Vst2Plugin::Dispatch(operation, index, value, pointer, number);
        }
        auto* const pin = static_cast<vst2::PinProperties*>(pointer);
        std::memset(pointer, 0xFF, kTooMuch);
        pin->flags = vst2::kPinNamesSpeakers;
        switch (mFacts.id & 0xF) {
            case 1:
                pin->arrangement = std::numeric_limits<std::int32_t>::max();
                return 1;
            case 2:
                pin->arrangement = std::numeric_limits<std::int32_t>::min();
                return -1;
            case 3:
                pin->arrangement = vst2::kArrangements;
                return 1;
            case 4:
                // More speakers than it has channels.
                pin->arrangement = vst2::kArrangement71;
                return 1;
            case 5:
                // An answer that does not count.
                pin->arrangement = 5;
                return 0;
            default:
                pin->arrangement = 5;
                throw std::runtime_error("not today");
        }
    }
};

}  // namespace

ZEL_VST2_ENTRY {
    std::vector<Vst2Facts> contents;
    for (std::int32_t i = 1; i <= 6; ++i) contents.push_back({"Nonsense Pins", 0x5A4E5000 + i, 3, 2});
    return EnterShell(host, "Nonsense Pins", 0x5A4E5000, contents,
                      [host](const Vst2Facts& facts) { return new Nonsense(host, facts); });
}
