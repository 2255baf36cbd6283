#pragma once

#include <vector>

#include <zelcore/ustring.h>
#include <zelmediatypes/AudioChannelLayout.h>

#include <zelaudiofilterhost/Export.h>

namespace zelaudiofilterhost {

/// One bus: a group of channels that belong together, with a name for people that may be empty. A value; any thread.
class ZELAUDIOFILTERHOST_API AudioFilterBusDescription {
public:
    /// What a bus is for.
    enum Kind {
        kMain = 0,      ///< carries the sound that the filter works on
        kAuxiliary = 1  ///< stands beside it, like a side-chain
    };

    /// No name, no channels, a main bus.
    AudioFilterBusDescription();
    /// A bus of that name, with these channels.
    AudioFilterBusDescription(const zelcore::ustring& name, const zelmediatypes::AudioChannelLayout& layout,
                              Kind kind = kMain);

    /// What people call the bus; may be empty.
    const zelcore::ustring& GetName() const { return mName; }
    /// Its channels in order.
    const zelmediatypes::AudioChannelLayout& GetLayout() const { return mLayout; }
    /// What the bus is for.
    Kind GetKind() const { return mKind; }

    /// Equal in name, channels and kind.
    bool operator==(const AudioFilterBusDescription&) const = default;

private:
    zelcore::ustring mName;
    zelmediatypes::AudioChannelLayout mLayout;
    Kind mKind;
};

/// The buses of one direction, in the filter's order.
typedef std::vector<AudioFilterBusDescription> AudioFilterBusList;

}  // namespace zelaudiofilterhost
