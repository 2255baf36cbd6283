#pragma once

#include <zelaudiofilterhost/AudioFilterBusDescription.h>
#include <zelaudiofilterhost/ChannelMap.h>

namespace zelaudiofilterhost {

/// AudioFilter::BuildBestFitChannelMap.
ChannelMap BuildBestFitMap(const AudioFilterBusList& buses, const zelmediatypes::AudioChannelLayout& targetLayout);

/// What AudioFilter::AutoConnectSideChainChannels makes of `map`, the map of the inputs. The side-chain's first channel
/// is the target channel `firstTarget`.
ChannelMap ConnectSideChain(const ChannelMap& map, const AudioFilterBusList& inputBuses,
                            const zelmediatypes::AudioChannelLayout& sideChain, int firstTarget, bool replaceExisting);

int CountChannels(const AudioFilterBusList& buses);

}  // namespace zelaudiofilterhost
