#include <zelmediatypes/AudioChannelLabel.h>

#include <string_view>

#include <zelcore/Localizer.h>
#include <zelcore/Utf.h>

namespace zelmediatypes {

namespace {

struct LabelTexts {
    std::string_view name;
    std::string_view abbreviation;
};

LabelTexts GetTexts(AudioChannelLabel label) {
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
        case kChannelLeftCenter:
            return {"$$$/zelmediatypes/ChannelLabel/LeftCenter=Left Center", "Lc"};
        case kChannelRightCenter:
            return {"$$$/zelmediatypes/ChannelLabel/RightCenter=Right Center", "Rc"};
        case kChannelTopCenter:
            return {"$$$/zelmediatypes/ChannelLabel/TopCenter=Top Center", "Tc"};
        case kChannelLeftTopMiddle:
            return {"$$$/zelmediatypes/ChannelLabel/LeftTopMiddle=Left Top Middle", "Ltm"};
        case kChannelRightTopMiddle:
            return {"$$$/zelmediatypes/ChannelLabel/RightTopMiddle=Right Top Middle", "Rtm"};
        case kChannelCenterTopFront:
            return {"$$$/zelmediatypes/ChannelLabel/CenterTopFront=Center Top Front", "Ctf"};
        case kChannelCenterTopRear:
            return {"$$$/zelmediatypes/ChannelLabel/CenterTopRear=Center Top Rear", "Ctr"};
        case kChannelLFE2:
            return {"$$$/zelmediatypes/ChannelLabel/LFE2=LFE 2", "Lfe2"};
    }
    // Sessions of a newer version may carry labels that this one does not know.
    return {};
}

}  // namespace

zelcore::ustring AudioChannelLabelDescription(AudioChannelLabel label, bool abbreviated) {
    const LabelTexts texts = GetTexts(label);
    return abbreviated ? zelcore::utility::AsciiToUTF16(texts.abbreviation) : zelcore::config::Localize(texts.name);
}

}  // namespace zelmediatypes
