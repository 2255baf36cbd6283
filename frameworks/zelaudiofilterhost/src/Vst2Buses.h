#pragma once

#include <zelaudiofilterhost/AudioFilterBusDescription.h>

#include "Vst2Instance.h"

namespace zelaudiofilterhost {

/// The buses of a VST2 effect. The format has channels alone, so which of them belong together is our reading.
///
/// The outputs are one main bus. So are the inputs; but where an effect has outputs and more inputs than those, the
/// inputs beyond that number are a second, auxiliary bus, the side-chain: effects of this format have what they listen
/// to behind what they work on. A direction without channels has no bus.
///
/// The channels of a main bus are what the effect says of their speakers, when it says so of all of them and names no
/// place twice, else the usual ones of that many. The texts that it gives its channels are not looked at.
struct Vst2Buses {
    AudioFilterBusList inputs;
    AudioFilterBusList outputs;

    /// For an effect with that many channels, which it need not agree with any more. An effect that throws has not said
    /// anything. Main thread.
    static Vst2Buses Read(const Vst2Instance& instance, int inputCount, int outputCount);
};

}  // namespace zelaudiofilterhost
