#pragma once

#include <cstddef>
#include <string_view>
#include <vector>

#include <zelmediatypes/ChannelLabel.h>

namespace zelmediatypes {

/// The channels of a track or a bus, in order, each with its label. Values; any thread, display texts on the main one.
class ZELMEDIATYPES_API ChannelLayout {
public:
    /// No channels.
    ChannelLayout();
    explicit ChannelLayout(const std::vector<ChannelLabel>& labels);

    /// `count` channels with the usual labels of that many: mono, stereo, 3.0, quad, 5.0, 5.1, 6.1, 7.1, 7.1.2
    /// (10), 7.1.4 (12); any other count gives discrete channels.
    static ChannelLayout ForChannelCount(std::size_t count);
    /// The layout of a name as commands and files write it: "mono", "stereo", "quad", "5.1", "7.1.4", …, or a number of
    /// discrete channels ("16", at most 64). No channels for anything else.
    static ChannelLayout FromName(std::string_view name);

    std::size_t GetChannelCount() const { return mLabels.size(); }
    /// The label of channel `index`; kChannelDiscrete beyond the end.
    ChannelLabel GetLabel(std::size_t index) const;
    /// Index of the first channel with that label, -1 when there is none.
    int FindChannel(ChannelLabel label) const;

    /// "Stereo", "5.1", …, or "16 channels", in the user's language.
    zelcore::ustring GetDisplayName() const;
    /// Text for one channel: its label's name, or "Channel 3" for a discrete one.
    zelcore::ustring GetChannelDisplayName(std::size_t index) const;

    bool operator==(const ChannelLayout&) const = default;

private:
    std::vector<ChannelLabel> mLabels;
};

}  // namespace zelmediatypes
