#pragma once

#include <zelaudiofilterhost/AudioFilterBusDescription.h>

namespace tessaly {

/// What the effects of a track are told of its side-chain. Main thread.
class SideChainBus {
public:
    /// The bus of a side-chain with these channels, with its name in the user's language; without channels and name
    /// where there are none.
    static zelaudiofilterhost::AudioFilterBusDescription Make(const zelmediatypes::AudioChannelLayout& layout);
};

}  // namespace tessaly
