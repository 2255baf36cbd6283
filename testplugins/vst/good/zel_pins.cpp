// A shell of effects that differ in their channels and in what they say of their speakers, the same for inputs and
// outputs. Sound passes through.
#include "support/Vst2ShellPlugin.h"

namespace {

using namespace zeltestplugins;

/// From the channel `index` on, the speakers of `arrangement`.
struct Group {
    std::int32_t index;
    std::int32_t arrangement;
    std::int32_t flags = vst2::kPinIsActive | vst2::kPinNamesSpeakers;
};

struct Pins {
    Vst2Facts facts;
    std::vector<Group> groups = {};
};

const std::vector<Pins>& Contents() {
    static const std::vector<Pins> contents = {
        {{"5.1", 0x5A500001, 6, 6}, {{0, vst2::kArrangement51}}},
        {{"7.1", 0x5A500002, 8, 8}, {{0, vst2::kArrangement71}}},
        // Left and right; center and LFE; left and right surround.
        {{"Groups", 0x5A500003, 6, 6}, {{0, 1}, {2, 5}, {4, 2}}},
        {{"Pairs", 0x5A500004, 4, 4}, {{0, 1}, {2, 1}}},
        {{"Half", 0x5A500005, 5, 5}, {{0, 1}}},
        {{"Unflagged", 0x5A500006, 2, 2}, {{0, 5, vst2::kPinIsActive | vst2::kPinIsFirstOfPair}}},
        {{"Side-chain", 0x5A500007, 8, 6}, {{0, vst2::kArrangement51}, {6, vst2::kArrangementStereo}}},
        {{"Widener", 0x5A500008, 1, 2}},
        {{"Sixty-four", 0x5A500009, 64, 64}},
        {{"Meter", 0x5A50000A, 4, 0}},
        {{"Nothing", 0x5A50000B, 0, 0}},
        {{"Own", 0x5A50000C, 2, 2}, {{0, vst2::kArrangementOwn}}},
        {{"Mono key", 0x5A50000D, 3, 2}}};
    return contents;
}

class Plugin : public Vst2Plugin {
public:
    Plugin(vst2::HostCallback host, const Pins& pins) : Vst2Plugin(host, pins.facts), mGroups(pins.groups) {}

protected:
    std::intptr_t Dispatch(std::int32_t operation, std::int32_t index, std::intptr_t value, void* pointer,
                           float number) override {
        if (operation != vst2::kGetInputProperties && operation != vst2::kGetOutputProperties) {
            return Vst2Plugin::Dispatch(operation, index, value, pointer, number);
        }
        auto* const pin = static_cast<vst2::PinProperties*>(pointer);
        std::snprintf(pin->label, sizeof(pin->label), "Channel %d", index + 1);
        pin->flags = vst2::kPinIsActive;
        for (const Group& group : mGroups) {
            if (group.index != index) continue;
            pin->flags = group.flags;
            pin->arrangement = group.arrangement;
        }
        return 1;
    }

private:
    std::vector<Group> mGroups;
};

}  // namespace

ZEL_VST2_ENTRY {
    std::vector<Vst2Facts> facts;
    for (const Pins& pins : Contents()) facts.push_back(pins.facts);
    return EnterShell(host, "Zel Pins", 0x5A500000, facts, [host](const Vst2Facts& wanted) {
        const auto found = std::find_if(Contents().begin(), Contents().end(),
                                        [&wanted](const Pins& pins) { return pins.facts.id == wanted.id; });
        return new Plugin(host, *found);
    });
}
