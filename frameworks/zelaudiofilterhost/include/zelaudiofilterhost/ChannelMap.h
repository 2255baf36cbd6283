#pragma once

#include <map>

namespace zelaudiofilterhost {

/// Which channel of the track each of a filter's own channels is connected with, in one direction: from the effect
/// channel (counted from 0 across all buses of the direction, in bus order) to the target channel (counted from 0; the
/// track's main channels, then those of its side-chain), or to kNotConnected. A target channel may occur several times.
typedef std::map<int, int> ChannelMap;

/// The entry of an effect channel that is connected with no target channel.
constexpr int kNotConnected = -1;

}  // namespace zelaudiofilterhost
