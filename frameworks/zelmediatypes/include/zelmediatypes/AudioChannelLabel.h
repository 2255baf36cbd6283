#pragma once

#include <zelcore/ustring.h>
#include <zelmediatypes/Export.h>

namespace zelmediatypes {

/// What one audio channel is for. The numbers are stored in sessions: they never change.
enum AudioChannelLabel {
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
    kChannelRightTopRear = 14,
    kChannelLeftCenter = 15,  ///< between left and center
    kChannelRightCenter = 16,
    kChannelTopCenter = 17,  ///< straight above
    kChannelLeftTopMiddle = 18,
    kChannelRightTopMiddle = 19,
    kChannelCenterTopFront = 20,
    kChannelCenterTopRear = 21,
    kChannelLFE2 = 22
};

/// A label as people read it: its name in the user's language ("Left", "LFE", …), or, `abbreviated`, its short sign,
/// the same in every language ("L", "Lfe", "Ltf", …). Empty for kChannelDiscrete and for unknown numbers. Names are
/// for the main thread, signs for any.
ZELMEDIATYPES_API zelcore::ustring AudioChannelLabelDescription(AudioChannelLabel label, bool abbreviated);

}  // namespace zelmediatypes
