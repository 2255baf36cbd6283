#pragma once

#include <string>

#include <zelaudiofilterhost/ChannelMap.h>

namespace tessaly {

/// A channel map as people write it: for each of the effect's channels, in order, the number of the track's channel
/// from 1, or "-" for none, with commas between: "2,1,-". The channels of the side-chain are counted after the track's.
class ChannelMapText {
public:
    /// Throws UsageError for what is no such list, or has more channels than there can be.
    static zelaudiofilterhost::ChannelMap Parse(const std::string& list);
    /// "none" for a map without channels.
    static std::string Print(const zelaudiofilterhost::ChannelMap& map);
};

}  // namespace tessaly
