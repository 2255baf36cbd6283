#include <zelmediatypes/ChannelLayout.h>

#include <algorithm>
#include <charconv>
#include <initializer_list>
#include <string>

#include <zelcore/Localizer.h>
#include <zelcore/StringUtils.h>
#include <zelcore/Utf.h>

namespace zelmediatypes {

namespace {

constexpr std::size_t kMaxDiscreteChannels = 64;

/// A layout that has a name: as commands and files write it, and as the user reads it.
struct NamedLayout {
    std::string_view name;
    std::string_view displayName;
    std::vector<ChannelLabel> labels;
};

const std::vector<NamedLayout>& GetNamedLayouts() {
    constexpr ChannelLabel L = kChannelLeft, R = kChannelRight, C = kChannelCenter, Lfe = kChannelLFE;
    constexpr ChannelLabel Ls = kChannelLeftSurround, Rs = kChannelRightSurround, Cs = kChannelCenterSurround;
    constexpr ChannelLabel Lr = kChannelLeftRear, Rr = kChannelRightRear;
    constexpr ChannelLabel Ltf = kChannelLeftTopFront, Rtf = kChannelRightTopFront;
    constexpr ChannelLabel Ltr = kChannelLeftTopRear, Rtr = kChannelRightTopRear;
    // Never freed: layouts may be named while the process ends. Each has another number of channels than the others.
    static const std::vector<NamedLayout>* const sLayouts = new std::vector<NamedLayout>{
        {"mono", "$$$/zelmediatypes/ChannelLayout/Mono=Mono", {kChannelMono}},
        {"stereo", "$$$/zelmediatypes/ChannelLayout/Stereo=Stereo", {L, R}},
        {"3.0", "$$$/zelmediatypes/ChannelLayout/3.0=3.0", {L, R, C}},
        {"quad", "$$$/zelmediatypes/ChannelLayout/Quad=Quad", {L, R, Ls, Rs}},
        {"5.0", "$$$/zelmediatypes/ChannelLayout/5.0=5.0", {L, R, C, Ls, Rs}},
        {"5.1", "$$$/zelmediatypes/ChannelLayout/5.1=5.1", {L, R, C, Lfe, Ls, Rs}},
        {"6.1", "$$$/zelmediatypes/ChannelLayout/6.1=6.1", {L, R, C, Lfe, Ls, Rs, Cs}},
        {"7.1", "$$$/zelmediatypes/ChannelLayout/7.1=7.1", {L, R, C, Lfe, Ls, Rs, Lr, Rr}},
        {"7.1.2", "$$$/zelmediatypes/ChannelLayout/7.1.2=7.1.2", {L, R, C, Lfe, Ls, Rs, Lr, Rr, Ltf, Rtf}},
        {"7.1.4", "$$$/zelmediatypes/ChannelLayout/7.1.4=7.1.4", {L, R, C, Lfe, Ls, Rs, Lr, Rr, Ltf, Rtf, Ltr, Rtr}},
    };
    return *sLayouts;
}

ChannelLayout Discrete(std::size_t count) { return ChannelLayout(std::vector<ChannelLabel>(count, kChannelDiscrete)); }

/// The number that the whole of `text` is; 0 when it is none, or not one of 1 to kMaxDiscreteChannels.
std::size_t ReadChannelCount(std::string_view text) {
    std::size_t count = 0;
    const char* const end = text.data() + text.size();
    const std::from_chars_result result = std::from_chars(text.data(), end, count);
    return result.ec == std::errc() && result.ptr == end && count <= kMaxDiscreteChannels ? count : 0;
}

zelcore::ustring LocalizeWithNumber(std::string_view keyAndDefault, std::size_t number) {
    zelcore::ustring text = zelcore::config::Localize(keyAndDefault);
    zelcore::utility::ReplaceInString(text, zelcore::utility::AsciiToUTF16("@0"),
                                      zelcore::utility::AsciiToUTF16(std::to_string(number)));
    return text;
}

}  // namespace

ChannelLayout::ChannelLayout() = default;

ChannelLayout::ChannelLayout(const std::vector<ChannelLabel>& labels) : mLabels(labels) {}

ChannelLayout ChannelLayout::ForChannelCount(std::size_t count) {
    for (const NamedLayout& layout : GetNamedLayouts())
        if (layout.labels.size() == count) return ChannelLayout(layout.labels);
    return Discrete(count);
}

ChannelLayout ChannelLayout::FromName(std::string_view name) {
    for (const NamedLayout& layout : GetNamedLayouts())
        if (layout.name == name) return ChannelLayout(layout.labels);
    return Discrete(ReadChannelCount(name));
}

ChannelLabel ChannelLayout::GetLabel(std::size_t index) const {
    return index < mLabels.size() ? mLabels[index] : kChannelDiscrete;
}

int ChannelLayout::FindChannel(ChannelLabel label) const {
    const auto found = std::find(mLabels.begin(), mLabels.end(), label);
    return found != mLabels.end() ? static_cast<int>(found - mLabels.begin()) : -1;
}

zelcore::ustring ChannelLayout::GetDisplayName() const {
    for (const NamedLayout& layout : GetNamedLayouts())
        if (layout.labels == mLabels) return zelcore::config::Localize(layout.displayName);
    if (mLabels.size() == 1) return zelcore::config::Localize("$$$/zelmediatypes/ChannelLayout/OneChannel=1 channel");
    return LocalizeWithNumber("$$$/zelmediatypes/ChannelLayout/Channels=@0 channels", mLabels.size());
}

zelcore::ustring ChannelLayout::GetChannelDisplayName(std::size_t index) const {
    const zelcore::ustring name = GetChannelLabelName(GetLabel(index));
    // People count channels from one.
    return name.empty() ? LocalizeWithNumber("$$$/zelmediatypes/ChannelLayout/Channel=Channel @0", index + 1) : name;
}

}  // namespace zelmediatypes
