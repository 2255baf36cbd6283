#include <zelmediatypes/ChannelLabel.h>

#include <string_view>

#include <zelcore/Localizer.h>
#include <zelcore/Utf.h>

namespace zelmediatypes {

namespace {

struct LabelTexts {
    std::string_view name;
    std::string_view abbreviation;
};

LabelTexts GetTexts(ChannelLabel label) {
    switch (label) {
        case kChannelDiscrete:
            return {};
        case kChannelMono:
            return {"$$$/zelmediatypes/ChannelLabel/Mono=Mono", "M"};
        case kChannelLeft:
            return {"$$$/zelmediatypes/ChannelLabel/Left=Left", "L"};
        case kChannelRight:
            return {"$$$/zelmediatypes/ChannelLabel/Right=Right", "R"};
        case kChannelCenter:
            return {"$$$/zelmediatypes/ChannelLabel/Center=Center", "C"};
        case kChannelLFE:
            return {"$$$/zelmediatypes/ChannelLabel/LFE=LFE", "Lfe"};
        case kChannelLeftSurround:
            return {"$$$/zelmediatypes/ChannelLabel/LeftSurround=Left Surround", "Ls"};
        case kChannelRightSurround:
            return {"$$$/zelmediatypes/ChannelLabel/RightSurround=Right Surround", "Rs"};
        case kChannelCenterSurround:
            return {"$$$/zelmediatypes/ChannelLabel/CenterSurround=Center Surround", "Cs"};
        case kChannelLeftRear:
            return {"$$$/zelmediatypes/ChannelLabel/LeftRear=Left Rear", "Lr"};
        case kChannelRightRear:
            return {"$$$/zelmediatypes/ChannelLabel/RightRear=Right Rear", "Rr"};
        case kChannelLeftTopFront:
            return {"$$$/zelmediatypes/ChannelLabel/LeftTopFront=Left Top Front", "Ltf"};
        case kChannelRightTopFront:
            return {"$$$/zelmediatypes/ChannelLabel/RightTopFront=Right Top Front", "Rtf"};
        case kChannelLeftTopRear:
            return {"$$$/zelmediatypes/ChannelLabel/LeftTopRear=Left Top Rear", "Ltr"};
        case kChannelRightTopRear:
            return {"$$$/zelmediatypes/ChannelLabel/RightTopRear=Right Top Rear", "Rtr"};
    }
    // Sessions of a newer version may carry labels that this one does not know.
    return {};
}

}  // namespace

zelcore::ustring GetChannelLabelName(ChannelLabel label) { return zelcore::config::Localize(GetTexts(label).name); }

zelcore::ustring GetChannelLabelAbbreviation(ChannelLabel label) {
    return zelcore::utility::AsciiToUTF16(GetTexts(label).abbreviation);
}

}  // namespace zelmediatypes
