#pragma once

#include <zelmediatypes/AudioChannelLabel.h>

namespace zelmediatypes {

/// One channel of a track or a bus.
struct AudioChannelDescription {
    /// What the channel is for.
    AudioChannelLabel label = kChannelDiscrete;

    /// Equal when all members are.
    bool operator==(const AudioChannelDescription&) const = default;
};

}  // namespace zelmediatypes
