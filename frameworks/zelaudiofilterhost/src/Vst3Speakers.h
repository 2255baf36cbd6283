#pragma once

#include <optional>

#include <pluginterfaces/vst/vsttypes.h>
#include <zelmediatypes/AudioChannelLayout.h>

namespace zelaudiofilterhost {

/// How many speakers an arrangement has; each is one channel.
std::size_t CountVst3Speakers(Steinberg::Vst::SpeakerArrangement arrangement);

/// The channels of an arrangement, in the order in which a VST3 effect has them. Speakers that have no label here
/// become discrete channels.
///
/// The format has speakers at the sides and surround ones behind them, but calls those of 5.1 surround too, where there
/// are no others. So beside speakers at the sides the surround ones are the rear channels, and without any they are the
/// surround channels.
zelmediatypes::AudioChannelLayout GetVst3Layout(Steinberg::Vst::SpeakerArrangement arrangement);

/// The arrangement whose channels are those of `layout`, in whichever order. Nothing when there is none: for discrete
/// channels, for a label that occurs twice, for rear channels without surround ones.
std::optional<Steinberg::Vst::SpeakerArrangement> GetVst3Arrangement(const zelmediatypes::AudioChannelLayout& layout);

}  // namespace zelaudiofilterhost
