#pragma once

#include <string>

#include <zelmediatypes/AudioChannelLayout.h>

namespace tessaly {

/// The name of a channel layout on the command line.
class ChannelLayoutName {
public:
    /// Never without channels. Throws UsageError that lists the names for a name that is none of them.
    static zelmediatypes::AudioChannelLayout Parse(const std::string& name);
};

}  // namespace tessaly
