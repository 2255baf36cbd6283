#pragma once

#include <cstddef>
#include <initializer_list>
#include <string_view>
#include <vector>

#include <zelmediatypes/AudioChannelDescription.h>

namespace zelmediatypes {

/// The channels of a track or a bus, in order. A value, for any thread; display texts are for the main one.
typedef std::vector<AudioChannelDescription> AudioChannelLayout;

/// Channels with these labels.
ZELMEDIATYPES_API AudioChannelLayout MakeChannelLayout(std::initializer_list<AudioChannelLabel> labels);

/// `count` channels with the usual labels of that many: mono, stereo, 3.0, quad, 5.0, 5.1, 6.1, 7.1, 7.1.2 (10), 7.1.4
/// (12); any other count gives discrete channels.
ZELMEDIATYPES_API AudioChannelLayout MakeChannelLayoutForCount(std::size_t count);
/// The layout of a name as commands and files write it: "mono", "stereo", "quad", "5.1", "7.1.4", …, or a number of
/// discrete channels ("16", at most 64). No channels for anything else.
ZELMEDIATYPES_API AudioChannelLayout MakeChannelLayoutForName(std::string_view name);
/// The names that MakeChannelLayoutForName knows, numbers aside, by rising count of channels.
ZELMEDIATYPES_API std::vector<std::string_view> GetChannelLayoutNames();

/// Index of the first channel with that label, -1 when there is none.
ZELMEDIATYPES_API int FindChannel(const AudioChannelLayout& layout, AudioChannelLabel label);

/// "Stereo", "5.1", …, or "16 channels", in the user's language.
ZELMEDIATYPES_API zelcore::ustring GetChannelLayoutDisplayName(const AudioChannelLayout& layout);

}  // namespace zelmediatypes
