#pragma once

#include <zelcore/ustring.h>
#include <zelmediatypes/Export.h>

namespace zelmediatypes {

/// What one audio channel is for. The numbers are stored in sessions: they never change.
enum ChannelLabel {
    kChannelDiscrete = 0,  ///< a channel without a place of its own
    kChannelMono = 1,
    kChannelLeft = 2,
    kChannelRight = 3,
    kChannelCenter = 4,
    kChannelLFE = 5,
    kChannelLeftSurround = 6,
    kChannelRightSurround = 7,
    kChannelCenterSurround = 8,
    kChannelLeftRear = 9,
    kChannelRightRear = 10,
    kChannelLeftTopFront = 11,
    kChannelRightTopFront = 12,
    kChannelLeftTopRear = 13,
    kChannelRightTopRear = 14
};

/// The label's name in the user's language ("Left", "LFE", …); empty for kChannelDiscrete and unknown numbers. Main
/// thread.
ZELMEDIATYPES_API zelcore::ustring GetChannelLabelName(ChannelLabel label);
/// The label's short sign, the same in every language ("L", "Lfe", "Ltf", …); empty like the name.
ZELMEDIATYPES_API zelcore::ustring GetChannelLabelAbbreviation(ChannelLabel label);

}  // namespace zelmediatypes
