#pragma once

#include <vector>

#include <pluginterfaces/vst/ivstaudioprocessor.h>
#include <pluginterfaces/vst/ivstcomponent.h>
#include <zelaudiofilterhost/AudioFilterBusDescription.h>

namespace zelaudiofilterhost {

/// The audio buses of a VST3 effect as they were read at one time, main and auxiliary ones in the effect's order. At
/// most PluginComponentInfo::kMaxBuses and kMaxChannels in each direction.
///
/// A bus has as many channels as the effect counts in it. They are the speakers that it arranges there, in its own
/// order; where it arranges none they are the usual ones of that many, and discrete where it counts otherwise than it
/// arranges.
struct Vst3BusLayout {
    AudioFilterBusList inputs;
    AudioFilterBusList outputs;

    const AudioFilterBusList& Get(Steinberg::Vst::BusDirection direction) const {
        return direction == Steinberg::Vst::kInput ? inputs : outputs;
    }
    int CountChannels(Steinberg::Vst::BusDirection direction) const;
    /// Whether the other has as many buses, and as many channels in each.
    bool HasSameChannels(const Vst3BusLayout& other) const;

    /// Makes the effect's own arrangement of speakers the agreed one and reads what came of it. While the effect is not
    /// active. Exceptions of the plug-in's come out.
    static Vst3BusLayout Settle(Steinberg::Vst::IComponent& component, Steinberg::Vst::IAudioProcessor& processor);
    /// Asks the effect to give all main buses these channels, or else the first one of each direction; the others keep
    /// what they have. Whatever it answers, it may have done anything: settle again. Likewise.
    void Ask(Steinberg::Vst::IComponent& component, Steinberg::Vst::IAudioProcessor& processor,
             const zelmediatypes::AudioChannelLayout& layout) const;
    /// Switches all of these buses on or off. Buses of events stay as they are, which is off. Likewise.
    void Activate(Steinberg::Vst::IComponent& component, bool active) const;
};

}  // namespace zelaudiofilterhost
