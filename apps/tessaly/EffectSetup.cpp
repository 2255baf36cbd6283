#include "EffectSetup.h"

#include <algorithm>
#include <charconv>
#include <stdexcept>
#include <vector>

#include "ChannelMapText.h"
#include "TerminalText.h"

namespace tessaly {

using zelaudiofilterhost::AudioFilter;
using zelaudiofilterhost::ChannelMap;

namespace {

constexpr std::size_t kMostListed = 20;

std::string GetPrintableName(const AudioFilter& filter) {
    return TerminalText::MakePrintable(TerminalText::FromText(filter.GetName()));
}

std::string Count(std::size_t count, const std::string& what) {
    return std::to_string(count) + " " + what + (count == 1 ? "" : "s");
}

void ApplyMap(AudioFilter& filter, AudioFilter::Direction direction, const ChannelMap& map) {
    const bool isInput = direction == AudioFilter::kInput;
    const std::string what = isInput ? "input channel" : "output channel";
    const auto channels = static_cast<std::size_t>(filter.GetEffectChannelCount(direction));
    const std::string prefix = "the map " + ChannelMapText::Print(map) + " does not fit: ";
    if (map.size() != channels)
        throw std::runtime_error(prefix + GetPrintableName(filter) + " has " + Count(channels, what) + ", the map " +
                                 std::to_string(map.size()));
    const std::size_t main = filter.GetChannelMapTargetChannelLayout().size();
    const std::size_t sideChain = filter.GetSideChainTargetBus().GetLayout().size();
    const auto targets = static_cast<int>(isInput ? main + sideChain : main);
    const bool fits = std::all_of(map.begin(), map.end(), [=](const auto& entry) { return entry.second < targets; });
    if (!fits) {
        throw std::runtime_error(prefix + "the track has " + Count(main, "channel") +
                                 (isInput ? ", its side-chain " + std::to_string(sideChain)
                                          : std::string(", and nothing goes into a side-chain")));
    }
    filter.SetChannelMap(map, direction);
}

// Parameters

std::vector<std::string> GetParameterNames(const AudioFilter& filter) {
    std::vector<std::string> names;
    const int count = filter.GetParameterCount();
    names.reserve(static_cast<std::size_t>(count));
    for (int i = 0; i < count; ++i) names.push_back(TerminalText::FromText(filter.GetParameterInfo(i)->GetName()));
    return names;
}

/// False for a text that is no number.
bool ReadIndex(const std::string& text, std::size_t& index) {
    std::size_t number = 0;
    const char* const end = text.data() + text.size();
    const std::from_chars_result result = std::from_chars(text.data(), end, number);
    index = number - 1;
    return result.ec == std::errc() && result.ptr == end;
}

template <typename Matches>
std::vector<std::size_t> FindAll(const std::vector<std::string>& names, Matches matches) {
    std::vector<std::size_t> found;
    for (std::size_t i = 0; i < names.size(); ++i)
        if (matches(names[i])) found.push_back(i);
    return found;
}

std::string ListShortly(const std::vector<std::string>& names, const std::vector<std::size_t>& indices) {
    std::string list;
    for (std::size_t i = 0; i < indices.size() && i < kMostListed; ++i)
        list += "\n  " + std::to_string(indices[i] + 1) + "  " + TerminalText::MakePrintable(names[indices[i]]);
    if (indices.size() > kMostListed) list += "\n  and " + std::to_string(indices.size() - kMostListed) + " more";
    return list;
}

}  // namespace

void EffectSetup::Apply(AudioFilter& filter, const RenderOptions::Effect& wanted) {
    if (wanted.inputMap) ApplyMap(filter, AudioFilter::kInput, *wanted.inputMap);
    if (wanted.outputMap) ApplyMap(filter, AudioFilter::kOutput, *wanted.outputMap);
    for (const RenderOptions::Setting& setting : wanted.settings)
        filter.SetParameterValue(FindParameter(filter, setting.parameter), setting.value);
}

int EffectSetup::FindParameter(const AudioFilter& filter, const std::string& text) {
    const std::vector<std::string> names = GetParameterNames(filter);
    std::size_t index = 0;
    if (ReadIndex(text, index)) {
        if (index < names.size()) return static_cast<int>(index);
        throw std::runtime_error(GetPrintableName(filter) + " has " + Count(names.size(), "parameter") +
                                 ", no parameter " + TerminalText::MakePrintable(text));
    }
    std::vector<std::size_t> found = FindAll(names, [&](const std::string& name) { return name == text; });
    if (found.empty()) {
        found = FindAll(names, [wanted = TerminalText::FoldCase(text)](const std::string& name) {
            return TerminalText::FoldCase(name) == wanted;
        });
    }
    if (found.size() == 1) return static_cast<int>(found.front());
    const std::string printable = "'" + TerminalText::MakePrintable(text) + "'";
    if (!found.empty())
        throw std::runtime_error("several parameters of " + GetPrintableName(filter) + " are called " + printable +
                                 "; give the number:" + ListShortly(names, found));
    throw std::runtime_error(GetPrintableName(filter) + " has no parameter called " + printable +
                             (names.empty()
                                  ? ", nor any other"
                                  : ", but:" + ListShortly(names, FindAll(names, [](const auto&) { return true; }))));
}

}  // namespace tessaly
