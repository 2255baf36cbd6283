#include <zelmediatypes/AudioChannelLayout.h>

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
    AudioChannelLayout layout;
};

const std::vector<NamedLayout>& GetNamedLayouts() {
    constexpr AudioChannelLabel L = kChannelLeft, R = kChannelRight, C = kChannelCenter, Lfe = kChannelLFE;
    constexpr AudioChannelLabel Ls = kChannelLeftSurround, Rs = kChannelRightSurround, Cs = kChannelCenterSurround;
    constexpr AudioChannelLabel Lr = kChannelLeftRear, Rr = kChannelRightRear;
    constexpr AudioChannelLabel Ltf = kChannelLeftTopFront, Rtf = kChannelRightTopFront;
    constexpr AudioChannelLabel Ltr = kChannelLeftTopRear, Rtr = kChannelRightTopRear;
    // Never freed: layouts may be named while the process ends. Each has another number of channels than the others.
    static const std::vector<NamedLayout>* const sLayouts = new std::vector<NamedLayout>{
        {"mono", "$$$/zelmediatypes/ChannelLayout/Mono=Mono", MakeChannelLayout({kChannelMono})},
        {"stereo", "$$$/zelmediatypes/ChannelLayout/Stereo=Stereo", MakeChannelLayout({L, R})},
        {"3.0", "$$$/zelmediatypes/ChannelLayout/3.0=3.0", MakeChannelLayout({L, R, C})},
        {"quad", "$$$/zelmediatypes/ChannelLayout/Quad=Quad", MakeChannelLayout({L, R, Ls, Rs})},
        {"5.0", "$$$/zelmediatypes/ChannelLayout/5.0=5.0", MakeChannelLayout({L, R, C, Ls, Rs})},
        {"5.1", "$$$/zelmediatypes/ChannelLayout/5.1=5.1", MakeChannelLayout({L, R, C, Lfe, Ls, Rs})},
        {"6.1", "$$$/zelmediatypes/ChannelLayout/6.1=6.1", MakeChannelLayout({L, R, C, Lfe, Ls, Rs, Cs})},
        {"7.1", "$$$/zelmediatypes/ChannelLayout/7.1=7.1", MakeChannelLayout({L, R, C, Lfe, Ls, Rs, Lr, Rr})},
        {"7.1.2", "$$$/zelmediatypes/ChannelLayout/7.1.2=7.1.2",
         MakeChannelLayout({L, R, C, Lfe, Ls, Rs, Lr, Rr, Ltf, Rtf})},
        {"7.1.4", "$$$/zelmediatypes/ChannelLayout/7.1.4=7.1.4",
         MakeChannelLayout({L, R, C, Lfe, Ls, Rs, Lr, Rr, Ltf, Rtf, Ltr, Rtr})},
    };
    return *sLayouts;
}

AudioChannelLayout Discrete(std::size_t count) { return AudioChannelLayout(count); }

/// The number that the whole of `text` is; 0 when it is none, or not one of 1 to kMaxDiscreteChannels.
std::size_t ReadChannelCount(std::string_view text) {
    std::size_t count = 0;
    const char* const end = text.data() + text.size();
    const std::from_chars_result result = std::from_chars(text.data(), end, count);
    return result.ec == std::errc() && result.ptr == end && count <= kMaxDiscreteChannels ? count : 0;
}

zelcore::ustring LocalizeWithNumber(std::string_view keyAndDefault, std::size_t number) {
    return zelcore::utility::FillPlaceholders(zelcore::config::Localize(keyAndDefault),
                                              {zelcore::utility::AsciiToUTF16(std::to_string(number))});
}

}  // namespace

AudioChannelLayout MakeChannelLayout(std::initializer_list<AudioChannelLabel> labels) {
    AudioChannelLayout layout;
    layout.reserve(labels.size());
    for (const AudioChannelLabel label : labels) layout.push_back({label});
    return layout;
}

AudioChannelLayout MakeChannelLayoutForCount(std::size_t count) {
    for (const NamedLayout& named : GetNamedLayouts())
        if (named.layout.size() == count) return named.layout;
    return Discrete(count);
}

AudioChannelLayout MakeChannelLayoutForName(std::string_view name) {
    for (const NamedLayout& named : GetNamedLayouts())
        if (named.name == name) return named.layout;
    return Discrete(ReadChannelCount(name));
}

std::vector<std::string_view> GetChannelLayoutNames() {
    std::vector<std::string_view> names;
    for (const NamedLayout& named : GetNamedLayouts()) names.push_back(named.name);
    return names;
}

int FindChannel(const AudioChannelLayout& layout, AudioChannelLabel label) {
    const auto found = std::find(layout.begin(), layout.end(), AudioChannelDescription{label});
    return found != layout.end() ? static_cast<int>(found - layout.begin()) : -1;
}

zelcore::ustring GetChannelLayoutDisplayName(const AudioChannelLayout& layout) {
    for (const NamedLayout& named : GetNamedLayouts())
        if (named.layout == layout) return zelcore::config::Localize(named.displayName);
    if (layout.size() == 1) return zelcore::config::Localize("$$$/zelmediatypes/ChannelLayout/OneChannel=1 channel");
    return LocalizeWithNumber("$$$/zelmediatypes/ChannelLayout/Channels=@0 channels", layout.size());
}

}  // namespace zelmediatypes
