#include "Vst3Speakers.h"

#include <algorithm>
#include <array>
#include <bit>

#include <pluginterfaces/vst/vstspeaker.h>

namespace zelaudiofilterhost {

namespace Vst = Steinberg::Vst;
using Vst::SpeakerArrangement;
using zelmediatypes::AudioChannelDescription;
using zelmediatypes::AudioChannelLabel;
using zelmediatypes::AudioChannelLayout;

namespace {

constexpr int kSpeakers = 64;
constexpr SpeakerArrangement kSides = Vst::kSpeakerSl | Vst::kSpeakerSr;
constexpr SpeakerArrangement kSurrounds = Vst::kSpeakerLs | Vst::kSpeakerRs;

struct Place {
    SpeakerArrangement speaker;
    AudioChannelLabel label;
};

/// The surround speakers where there are none at the sides.
constexpr std::array<Place, 22> kPlaces = {{
    {Vst::kSpeakerL, zelmediatypes::kChannelLeft},
    {Vst::kSpeakerR, zelmediatypes::kChannelRight},
    {Vst::kSpeakerC, zelmediatypes::kChannelCenter},
    {Vst::kSpeakerLfe, zelmediatypes::kChannelLFE},
    {Vst::kSpeakerLs, zelmediatypes::kChannelLeftSurround},
    {Vst::kSpeakerRs, zelmediatypes::kChannelRightSurround},
    {Vst::kSpeakerLc, zelmediatypes::kChannelLeftCenter},
    {Vst::kSpeakerRc, zelmediatypes::kChannelRightCenter},
    {Vst::kSpeakerS, zelmediatypes::kChannelCenterSurround},
    {Vst::kSpeakerSl, zelmediatypes::kChannelLeftSurround},
    {Vst::kSpeakerSr, zelmediatypes::kChannelRightSurround},
    {Vst::kSpeakerTc, zelmediatypes::kChannelTopCenter},
    {Vst::kSpeakerTfl, zelmediatypes::kChannelLeftTopFront},
    {Vst::kSpeakerTfc, zelmediatypes::kChannelCenterTopFront},
    {Vst::kSpeakerTfr, zelmediatypes::kChannelRightTopFront},
    {Vst::kSpeakerTrl, zelmediatypes::kChannelLeftTopRear},
    {Vst::kSpeakerTrc, zelmediatypes::kChannelCenterTopRear},
    {Vst::kSpeakerTrr, zelmediatypes::kChannelRightTopRear},
    {Vst::kSpeakerLfe2, zelmediatypes::kChannelLFE2},
    {Vst::kSpeakerM, zelmediatypes::kChannelMono},
    {Vst::kSpeakerTsl, zelmediatypes::kChannelLeftTopMiddle},
    {Vst::kSpeakerTsr, zelmediatypes::kChannelRightTopMiddle},
}};

AudioChannelLabel GetLabel(SpeakerArrangement speaker, bool besideSides) {
    if (besideSides && speaker == Vst::kSpeakerLs) return zelmediatypes::kChannelLeftRear;
    if (besideSides && speaker == Vst::kSpeakerRs) return zelmediatypes::kChannelRightRear;
    const auto found = std::find_if(kPlaces.begin(), kPlaces.end(),
                                    [speaker](const Place& place) { return place.speaker == speaker; });
    return found != kPlaces.end() ? found->label : zelmediatypes::kChannelDiscrete;
}

/// 0 for a channel that has no speaker.
SpeakerArrangement GetSpeaker(AudioChannelLabel label, bool hasRear) {
    if (label == zelmediatypes::kChannelLeftRear) return Vst::kSpeakerLs;
    if (label == zelmediatypes::kChannelRightRear) return Vst::kSpeakerRs;
    if (hasRear && label == zelmediatypes::kChannelLeftSurround) return Vst::kSpeakerSl;
    if (hasRear && label == zelmediatypes::kChannelRightSurround) return Vst::kSpeakerSr;
    const auto found =
        std::find_if(kPlaces.begin(), kPlaces.end(), [label](const Place& place) { return place.label == label; });
    return found != kPlaces.end() ? found->speaker : 0;
}

bool HaveSameLabels(const AudioChannelLayout& left, const AudioChannelLayout& right) {
    return left.size() == right.size() && std::is_permutation(left.begin(), left.end(), right.begin());
}

}  // namespace

std::size_t CountVst3Speakers(SpeakerArrangement arrangement) {
    return static_cast<std::size_t>(std::popcount(arrangement));
}

AudioChannelLayout GetVst3Layout(SpeakerArrangement arrangement) {
    const bool besideSides = (arrangement & kSides) != 0 && (arrangement & kSurrounds) != 0;
    AudioChannelLayout layout;
    for (int bit = 0; bit < kSpeakers; ++bit) {
        const SpeakerArrangement speaker = SpeakerArrangement(1) << bit;
        if ((arrangement & speaker) != 0) layout.push_back({GetLabel(speaker, besideSides)});
    }
    return layout;
}

std::optional<SpeakerArrangement> GetVst3Arrangement(const AudioChannelLayout& layout) {
    const bool hasRear = zelmediatypes::FindChannel(layout, zelmediatypes::kChannelLeftRear) >= 0 ||
                         zelmediatypes::FindChannel(layout, zelmediatypes::kChannelRightRear) >= 0;
    SpeakerArrangement arrangement = 0;
    for (const AudioChannelDescription& channel : layout) arrangement |= GetSpeaker(channel.label, hasRear);
    // An effect that takes it will be read by what it then has.
    if (!HaveSameLabels(GetVst3Layout(arrangement), layout)) return std::nullopt;
    return arrangement;
}

}  // namespace zelaudiofilterhost
