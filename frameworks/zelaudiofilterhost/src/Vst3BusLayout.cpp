#include "Vst3BusLayout.h"

#include <algorithm>
#include <numeric>
#include <optional>

#include <zelaudiofilterhost/PluginComponentInfo.h>

namespace zelaudiofilterhost {

using Steinberg::int32;
namespace Vst = Steinberg::Vst;

namespace {

int32 CountBuses(Vst::IComponent& component, Vst::BusDirection direction) {
    return std::clamp(component.getBusCount(Vst::kAudio, direction), 0,
                      static_cast<int32>(PluginComponentInfo::kMaxBuses));
}

/// Nothing when the effect does not say it of every bus.
std::optional<std::vector<Vst::SpeakerArrangement>> ReadArrangements(Vst::IComponent& component,
                                                                     Vst::IAudioProcessor& processor,
                                                                     Vst::BusDirection direction) {
    std::vector<Vst::SpeakerArrangement> arrangements;
    const int32 count = CountBuses(component, direction);
    for (int32 index = 0; index < count; ++index) {
        Vst::SpeakerArrangement arrangement = 0;
        if (processor.getBusArrangement(direction, index, arrangement) != Steinberg::kResultOk) return std::nullopt;
        arrangements.push_back(arrangement);
    }
    return arrangements;
}

std::vector<int32> ReadChannels(Vst::IComponent& component, Vst::BusDirection direction) {
    std::vector<int32> channels;
    int32 left = PluginComponentInfo::kMaxChannels;
    const int32 count = CountBuses(component, direction);
    for (int32 index = 0; index < count; ++index) {
        Vst::BusInfo info = {};
        const bool known = component.getBusInfo(Vst::kAudio, direction, index, info) == Steinberg::kResultOk;
        // One that tells nothing keeps its place, or those behind it would be mistaken for it.
        channels.push_back(known ? std::clamp(info.channelCount, 0, left) : 0);
        left -= channels.back();
    }
    return channels;
}

}  // namespace

int Vst3BusLayout::CountChannels(Vst::BusDirection direction) const {
    const std::vector<int32>& channels = Get(direction);
    return std::accumulate(channels.begin(), channels.end(), 0);
}

Vst3BusLayout Vst3BusLayout::Settle(Vst::IComponent& component, Vst::IAudioProcessor& processor) {
    auto inputs = ReadArrangements(component, processor, Vst::kInput);
    auto outputs = ReadArrangements(component, processor, Vst::kOutput);
    if (inputs && outputs) {
        // Refusing its own arrangement changes nothing; that it was named is what some effects wait for.
        processor.setBusArrangements(inputs->data(), static_cast<int32>(inputs->size()), outputs->data(),
                                     static_cast<int32>(outputs->size()));
    }
    return {ReadChannels(component, Vst::kInput), ReadChannels(component, Vst::kOutput)};
}

void Vst3BusLayout::Activate(Vst::IComponent& component, bool active) const {
    for (const Vst::BusDirection direction : {Vst::BusDirection(Vst::kInput), Vst::BusDirection(Vst::kOutput)}) {
        const auto count = static_cast<int32>(Get(direction).size());
        for (int32 index = 0; index < count; ++index) component.activateBus(Vst::kAudio, direction, index, active);
    }
}

}  // namespace zelaudiofilterhost
