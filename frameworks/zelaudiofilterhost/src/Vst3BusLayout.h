#pragma once

#include <vector>

#include <pluginterfaces/vst/ivstaudioprocessor.h>
#include <pluginterfaces/vst/ivstcomponent.h>

namespace zelaudiofilterhost {

/// The audio buses of a VST3 effect, main and auxiliary ones in the effect's order: how many channels each has. At most
/// PluginComponentInfo::kMaxBuses and kMaxChannels in each direction.
struct Vst3BusLayout {
    std::vector<Steinberg::int32> inputs;
    std::vector<Steinberg::int32> outputs;

    const std::vector<Steinberg::int32>& Get(Steinberg::Vst::BusDirection direction) const {
        return direction == Steinberg::Vst::kInput ? inputs : outputs;
    }
    int CountChannels(Steinberg::Vst::BusDirection direction) const;
    bool operator==(const Vst3BusLayout&) const = default;

    /// Makes the effect's own arrangement of speakers the agreed one and reads what came of it. While the effect is not
    /// active. Exceptions of the plug-in's come out.
    static Vst3BusLayout Settle(Steinberg::Vst::IComponent& component, Steinberg::Vst::IAudioProcessor& processor);
    /// Switches all of these buses on or off. Buses of events stay as they are, which is off. Likewise.
    void Activate(Steinberg::Vst::IComponent& component, bool active) const;
};

}  // namespace zelaudiofilterhost
