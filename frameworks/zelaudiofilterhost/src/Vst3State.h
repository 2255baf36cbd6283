#pragma once

#include <optional>

#include "StateEnvelope.h"

namespace zelaudiofilterhost {

class BlockGate;
class Vst3Instance;
class Vst3Parameters;

/// The state of a VST3 effect: that of its component, that of its controller, and values that the component does not
/// have yet because no block has taken them to it. Of a component that keeps no state the values of all parameters.
/// Main thread; no exception of the effect's comes out.
class Vst3State {
public:
    /// Nothing when the effect fails. Beside blocks, too: `gate` is closed for a moment.
    static std::optional<StateEnvelope> Read(const Vst3Instance& instance, const Vst3Parameters& parameters,
                                             BlockGate& gate);

    /// Looks at the bytes alone.
    static bool IsFit(const StateEnvelope& state);
    /// Gives the effect what is fit. False when it refuses or throws. Never beside a block.
    static bool Write(const StateEnvelope& state, const Vst3Instance& instance, Vst3Parameters& parameters);
};

}  // namespace zelaudiofilterhost
