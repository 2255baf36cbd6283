#include "Vst2Buses.h"

#include <algorithm>
#include <array>
#include <cstring>
#include <initializer_list>
#include <set>

#include <zelcore/Localizer.h>
#include <zelmediatypes/AudioChannelLayout.h>

#include "PluginCall.h"

namespace zelaudiofilterhost {

using zelmediatypes::AudioChannelLabel;
using zelmediatypes::AudioChannelLayout;

namespace {

/// The channels of one of vst2::Arrangement; none for any other number.
AudioChannelLayout GetArrangement(std::int32_t arrangement) {
    using namespace zelmediatypes;
    constexpr AudioChannelLabel M = kChannelMono, L = kChannelLeft, R = kChannelRight, C = kChannelCenter;
    constexpr AudioChannelLabel Lfe = kChannelLFE, Lfe2 = kChannelLFE2, S = kChannelCenterSurround;
    constexpr AudioChannelLabel Ls = kChannelLeftSurround, Rs = kChannelRightSurround;
    constexpr AudioChannelLabel Lr = kChannelLeftRear, Rr = kChannelRightRear;
    constexpr AudioChannelLabel Lc = kChannelLeftCenter, Rc = kChannelRightCenter;
    constexpr AudioChannelLabel Tfl = kChannelLeftTopFront, Tfc = kChannelCenterTopFront, Tfr = kChannelRightTopFront;
    constexpr AudioChannelLabel Trl = kChannelLeftTopRear, Trr = kChannelRightTopRear;
    // By number. Those with two pairs beside the front have the rear one first.
    static const std::array<AudioChannelLayout, vst2::kArrangements> sLayouts = {
        MakeChannelLayout({M}),
        MakeChannelLayout({L, R}),
        MakeChannelLayout({Ls, Rs}),
        MakeChannelLayout({Lc, Rc}),
        MakeChannelLayout({Ls, Rs}),
        MakeChannelLayout({C, Lfe}),
        MakeChannelLayout({L, R, C}),
        MakeChannelLayout({L, R, S}),
        MakeChannelLayout({L, R, C, Lfe}),
        MakeChannelLayout({L, R, Lfe, S}),
        MakeChannelLayout({L, R, C, S}),
        MakeChannelLayout({L, R, Ls, Rs}),
        MakeChannelLayout({L, R, C, Lfe, S}),
        MakeChannelLayout({L, R, Lfe, Ls, Rs}),
        MakeChannelLayout({L, R, C, Ls, Rs}),
        MakeChannelLayout({L, R, C, Lfe, Ls, Rs}),
        MakeChannelLayout({L, R, C, Ls, Rs, S}),
        MakeChannelLayout({L, R, Lr, Rr, Ls, Rs}),
        MakeChannelLayout({L, R, C, Lfe, Ls, Rs, S}),
        MakeChannelLayout({L, R, Lfe, Lr, Rr, Ls, Rs}),
        MakeChannelLayout({L, R, C, Ls, Rs, Lc, Rc}),
        MakeChannelLayout({L, R, C, Lr, Rr, Ls, Rs}),
        MakeChannelLayout({L, R, C, Lfe, Ls, Rs, Lc, Rc}),
        MakeChannelLayout({L, R, C, Lfe, Lr, Rr, Ls, Rs}),
        MakeChannelLayout({L, R, C, Ls, Rs, Lc, Rc, S}),
        MakeChannelLayout({L, R, C, Lr, Rr, S, Ls, Rs}),
        MakeChannelLayout({L, R, C, Lfe, Ls, Rs, Lc, Rc, S}),
        MakeChannelLayout({L, R, C, Lfe, Lr, Rr, S, Ls, Rs}),
        MakeChannelLayout({L, R, C, Lfe, Ls, Rs, Tfl, Tfc, Tfr, Trl, Trr, Lfe2}),
    };
    if (arrangement < 0 || arrangement >= vst2::kArrangements) return {};
    return sLayouts[static_cast<std::size_t>(arrangement)];
}

/// The speakers of the group of channels that starts with the channel `index`; none when the effect does not say.
AudioChannelLayout AskForGroup(const Vst2Instance& instance, vst2::EffectOperation operation, int index) {
    // Far longer than the book says, because effects do not read it.
    std::array<char, 4096> buffer = {};
    vst2::PinProperties pin;
    bool answered = false;
    CallPluginQuietly([&] { answered = instance.Dispatch(operation, index, 0, buffer.data()) != 0; });
    std::memcpy(&pin, buffer.data(), sizeof(pin));
    if (!answered || (pin.flags & vst2::kPinNamesSpeakers) == 0) return {};
    return GetArrangement(pin.arrangement);
}

bool NamesAPlaceTwice(const AudioChannelLayout& layout) {
    std::set<AudioChannelLabel> seen;
    return std::any_of(layout.begin(), layout.end(),
                       [&seen](const auto& channel) { return !seen.insert(channel.label).second; });
}

/// The channels from the first on, as the effect describes them.
AudioChannelLayout ReadLayout(const Vst2Instance& instance, vst2::EffectOperation operation, std::size_t count) {
    AudioChannelLayout layout;
    while (layout.size() < count) {
        const AudioChannelLayout group = AskForGroup(instance, operation, static_cast<int>(layout.size()));
        layout.insert(layout.end(), group.begin(), group.end());
        const bool makesSense = !group.empty() && layout.size() <= count && !NamesAPlaceTwice(layout);
        if (!makesSense) return zelmediatypes::MakeChannelLayoutForCount(count);
    }
    return layout;
}

AudioFilterBusList MakeMainBus(const Vst2Instance& instance, vst2::EffectOperation operation, int count) {
    if (count <= 0) return {};
    return {AudioFilterBusDescription(zelcore::ustring(),
                                      ReadLayout(instance, operation, static_cast<std::size_t>(count)))};
}

}  // namespace

Vst2Buses Vst2Buses::Read(const Vst2Instance& instance, int inputCount, int outputCount) {
    const int mainInputs = outputCount > 0 ? std::min(inputCount, outputCount) : inputCount;
    Vst2Buses buses;
    buses.inputs = MakeMainBus(instance, vst2::kGetInputProperties, mainInputs);
    buses.outputs = MakeMainBus(instance, vst2::kGetOutputProperties, outputCount);
    if (inputCount > mainInputs) {
        const auto count = static_cast<std::size_t>(inputCount - mainInputs);
        buses.inputs.emplace_back(zelcore::config::Localize("$$$/zelaudiofilterhost/SideChainBus=Side-chain"),
                                  zelmediatypes::MakeChannelLayoutForCount(count),
                                  AudioFilterBusDescription::kAuxiliary);
    }
    return buses;
}

}  // namespace zelaudiofilterhost
