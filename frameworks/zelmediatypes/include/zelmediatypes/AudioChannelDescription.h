#pragma once

#include <zelmediatypes/AudioChannelLabel.h>

namespace zelmediatypes {

/// One channel of a track or a bus.
struct AudioChannelDescription {
    AudioChannelLabel label = kChannelDiscrete;

    bool operator==(const AudioChannelDescription&) const = default;
};

}  // namespace zelmediatypes
