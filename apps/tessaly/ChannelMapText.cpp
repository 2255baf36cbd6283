#include "ChannelMapText.h"

#include <charconv>
#include <string_view>

#include <zelaudiofilterhost/AudioFilter.h>
#include <zelaudiofilterhost/PluginComponentInfo.h>

#include "TerminalText.h"
#include "UsageError.h"

namespace tessaly {

using zelaudiofilterhost::AudioFilter;
using zelaudiofilterhost::ChannelMap;
using zelaudiofilterhost::kNotConnected;
using zelaudiofilterhost::PluginComponentInfo;

namespace {

UsageError NoMap(const std::string& list) {
    return UsageError("'" + TerminalText::MakePrintable(list) +
                      "' is no list of channels: write the track's channel for each of the effect's, from 1, or - for "
                      "none, as in 2,1,-");
}

/// False when `text` is neither the number of a channel nor the sign for none.
bool ReadTarget(std::string_view text, int& target) {
    target = kNotConnected;
    if (text == "-") return true;
    int number = 0;
    const char* const end = text.data() + text.size();
    const std::from_chars_result result = std::from_chars(text.data(), end, number);
    const bool exists = number >= 1 && number <= static_cast<int>(AudioFilter::kMaxTargetChannels);
    target = number - 1;
    return result.ec == std::errc() && result.ptr == end && exists;
}

}  // namespace

ChannelMap ChannelMapText::Parse(const std::string& list) {
    ChannelMap map;
    std::string_view rest = list;
    for (int channel = 0; channel < PluginComponentInfo::kMaxChannels; ++channel) {
        const std::size_t comma = rest.find(',');
        if (!ReadTarget(rest.substr(0, comma), map[channel])) throw NoMap(list);
        if (comma == std::string_view::npos) return map;
        rest.remove_prefix(comma + 1);
    }
    throw NoMap(list);
}

std::string ChannelMapText::Print(const ChannelMap& map) {
    if (map.empty()) return "none";
    std::string text;
    for (const auto& [channel, target] : map) {
        if (!text.empty()) text += ',';
        text += target == kNotConnected ? "-" : std::to_string(target + 1);
    }
    return text;
}

}  // namespace tessaly
