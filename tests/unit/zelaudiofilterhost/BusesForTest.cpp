#include "BusesForTest.h"

#include <sstream>
#include <stdexcept>

#include <zelcore/Utf.h>

#include "DescribeForTest.h"

using namespace zelaudiofilterhost;
using namespace zelmediatypes;

namespace zeltests {

namespace {

std::string Sign(AudioChannelLabel label) {
    const std::string sign = Text(AudioChannelLabelDescription(label, true));
    return sign.empty() ? "-" : sign;
}

AudioChannelLabel FromSign(const std::string& sign) {
    for (int label = kChannelDiscrete; label <= kChannelLFE2; ++label) {
        if (Sign(static_cast<AudioChannelLabel>(label)) == sign) return static_cast<AudioChannelLabel>(label);
    }
    throw std::invalid_argument("no channel is called " + sign);
}

}  // namespace

AudioChannelLayout Layout(const std::string& text) {
    AudioChannelLayout layout = MakeChannelLayoutForName(text);
    std::istringstream signs(layout.empty() ? text : "");
    for (std::string sign; signs >> sign;) layout.push_back({FromSign(sign)});
    return layout;
}

std::string Signs(const AudioChannelLayout& layout) {
    std::string text;
    for (const AudioChannelDescription& channel : layout) text += (text.empty() ? "" : " ") + Sign(channel.label);
    return text;
}

AudioFilterBusDescription Main(const std::string& layout, const std::string& name) {
    return {zelcore::utility::UTF8to16(name), Layout(layout), AudioFilterBusDescription::kMain};
}

AudioFilterBusDescription Aux(const std::string& layout, const std::string& name) {
    return {zelcore::utility::UTF8to16(name), Layout(layout), AudioFilterBusDescription::kAuxiliary};
}

std::vector<std::string> Texts(const AudioFilterBusList& buses) {
    std::vector<std::string> texts;
    for (const AudioFilterBusDescription& bus : buses) {
        const char* const kind = bus.GetKind() == AudioFilterBusDescription::kAuxiliary ? " (aux)" : "";
        texts.push_back(Text(bus.GetName()) + kind + ": " + Signs(bus.GetLayout()));
    }
    return texts;
}

std::vector<std::string> BusTexts(const AudioFilter& filter, AudioFilter::Direction direction) {
    AudioFilterBusList inputs;
    AudioFilterBusList outputs;
    filter.GetBusConfiguration(inputs, outputs);
    return Texts(direction == AudioFilter::kInput ? inputs : outputs);
}

std::string MapText(const ChannelMap& map) {
    std::string text;
    int expected = 0;
    for (const auto& [channel, target] : map) {
        text += (text.empty() ? "" : " ") + (target == kNotConnected ? "-" : std::to_string(target));
        if (channel != expected++) text += "?";
    }
    return text;
}

ChannelMap Map(const std::string& text) {
    ChannelMap map;
    std::istringstream targets(text);
    int channel = 0;
    for (std::string target; targets >> target;) map[channel++] = target == "-" ? kNotConnected : std::stoi(target);
    return map;
}

}  // namespace zeltests
