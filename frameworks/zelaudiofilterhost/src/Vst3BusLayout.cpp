#include "Vst3BusLayout.h"

#include <algorithm>
#include <optional>

#include <zelaudiofilterhost/PluginComponentInfo.h>

#include "PluginText.h"
#include "Vst3Speakers.h"

namespace zelaudiofilterhost {

using Steinberg::int32;
using zelmediatypes::AudioChannelLayout;
namespace Vst = Steinberg::Vst;

namespace {

/// Of one direction, by bus.
typedef std::vector<Vst::SpeakerArrangement> Arrangements;

int32 CountBuses(Vst::IComponent& component, Vst::BusDirection direction) {
    return std::clamp(component.getBusCount(Vst::kAudio, direction), 0,
                      static_cast<int32>(PluginComponentInfo::kMaxBuses));
}

/// Nothing when the effect does not say it of every bus.
std::optional<Arrangements> ReadArrangements(Vst::IComponent& component, Vst::IAudioProcessor& processor,
                                             Vst::BusDirection direction) {
    Arrangements arrangements;
    const int32 count = CountBuses(component, direction);
    for (int32 index = 0; index < count; ++index) {
        Vst::SpeakerArrangement arrangement = 0;
        if (processor.getBusArrangement(direction, index, arrangement) != Steinberg::kResultOk) return std::nullopt;
        arrangements.push_back(arrangement);
    }
    return arrangements;
}

/// By a copy: effects have been seen to write into what they are asked.
bool Arrange(Vst::IAudioProcessor& processor, Arrangements inputs, Arrangements outputs) {
    return processor.setBusArrangements(inputs.data(), static_cast<int32>(inputs.size()), outputs.data(),
                                        static_cast<int32>(outputs.size())) == Steinberg::kResultTrue;
}

AudioChannelLayout ReadArrangement(Vst::IAudioProcessor& processor, Vst::BusDirection direction, int32 index,
                                   std::size_t channels) {
    Vst::SpeakerArrangement arrangement = 0;
    const bool known = processor.getBusArrangement(direction, index, arrangement) == Steinberg::kResultOk;
    if (!known || arrangement == 0) return zelmediatypes::MakeChannelLayoutForCount(channels);
    if (CountVst3Speakers(arrangement) != channels) return AudioChannelLayout(channels);
    return GetVst3Layout(arrangement);
}

AudioFilterBusList ReadBuses(Vst::IComponent& component, Vst::IAudioProcessor& processor, Vst::BusDirection direction) {
    AudioFilterBusList buses;
    int32 left = PluginComponentInfo::kMaxChannels;
    const int32 count = CountBuses(component, direction);
    for (int32 index = 0; index < count; ++index) {
        Vst::BusInfo info = {};
        const bool known = component.getBusInfo(Vst::kAudio, direction, index, info) == Steinberg::kResultOk;
        // One that tells nothing keeps its place, or those behind it would be mistaken for it.
        if (!known) info = {};
        const int32 channels = std::clamp(info.channelCount, 0, left);
        left -= channels;
        buses.emplace_back(
            CleanPluginText(info.name, std::size(info.name)),
            ReadArrangement(processor, direction, index, static_cast<std::size_t>(channels)),
            info.busType == Vst::kAux ? AudioFilterBusDescription::kAuxiliary : AudioFilterBusDescription::kMain);
    }
    return buses;
}

/// `arrangements` with that of each main bus, or only of the first, replaced.
Arrangements Replace(Arrangements arrangements, const AudioFilterBusList& buses, Vst::SpeakerArrangement wanted,
                     bool onlyFirst) {
    for (std::size_t i = 0; i < arrangements.size() && i < buses.size(); ++i) {
        if (buses[i].GetKind() != AudioFilterBusDescription::kMain) continue;
        arrangements[i] = wanted;
        if (onlyFirst) break;
    }
    return arrangements;
}

bool HaveSameChannels(const AudioFilterBusList& left, const AudioFilterBusList& right) {
    return std::equal(left.begin(), left.end(), right.begin(), right.end(), [](const auto& one, const auto& other) {
        return one.GetLayout().size() == other.GetLayout().size();
    });
}

}  // namespace

int Vst3BusLayout::CountChannels(Vst::BusDirection direction) const {
    std::size_t count = 0;
    for (const AudioFilterBusDescription& bus : Get(direction)) count += bus.GetLayout().size();
    return static_cast<int>(count);
}

bool Vst3BusLayout::HasSameChannels(const Vst3BusLayout& other) const {
    return HaveSameChannels(inputs, other.inputs) && HaveSameChannels(outputs, other.outputs);
}

Vst3BusLayout Vst3BusLayout::Settle(Vst::IComponent& component, Vst::IAudioProcessor& processor) {
    const auto inputs = ReadArrangements(component, processor, Vst::kInput);
    const auto outputs = ReadArrangements(component, processor, Vst::kOutput);
    // Refusing its own arrangement changes nothing; that it was named is what some effects wait for.
    if (inputs && outputs) Arrange(processor, *inputs, *outputs);
    return {ReadBuses(component, processor, Vst::kInput), ReadBuses(component, processor, Vst::kOutput)};
}

void Vst3BusLayout::Ask(Vst::IComponent& component, Vst::IAudioProcessor& processor,
                        const AudioChannelLayout& layout) const {
    const std::optional<Vst::SpeakerArrangement> wanted = GetVst3Arrangement(layout);
    if (!wanted || *wanted == 0) return;
    const auto oldInputs = ReadArrangements(component, processor, Vst::kInput);
    const auto oldOutputs = ReadArrangements(component, processor, Vst::kOutput);
    if (!oldInputs || !oldOutputs) return;
    Arrangements lastInputs = *oldInputs;
    Arrangements lastOutputs = *oldOutputs;
    for (const bool onlyFirst : {false, true}) {
        Arrangements askedInputs = Replace(*oldInputs, inputs, *wanted, onlyFirst);
        Arrangements askedOutputs = Replace(*oldOutputs, outputs, *wanted, onlyFirst);
        // Asking for what it has, or for what it has refused, is not asking again.
        if (askedInputs == lastInputs && askedOutputs == lastOutputs) return;
        if (Arrange(processor, askedInputs, askedOutputs)) return;
        lastInputs.swap(askedInputs);
        lastOutputs.swap(askedOutputs);
    }
}

void Vst3BusLayout::Activate(Vst::IComponent& component, bool active) const {
    for (const Vst::BusDirection direction : {Vst::BusDirection(Vst::kInput), Vst::BusDirection(Vst::kOutput)}) {
        const auto count = static_cast<int32>(Get(direction).size());
        for (int32 index = 0; index < count; ++index) component.activateBus(Vst::kAudio, direction, index, active);
    }
}

}  // namespace zelaudiofilterhost
