#pragma once

#include <optional>

#include "StateEnvelope.h"

namespace zelaudiofilterhost {

class Vst2Instance;

/// The state of a VST2 effect. Main thread; no exception of the effect's comes out.
class Vst2State {
public:
    /// The block of bytes that the effect makes of all its programs; the values of its parameters where it makes none.
    /// With either the program that it is in. Nothing when the effect fails.
    static std::optional<StateEnvelope> Read(Vst2Instance& instance);

    /// Whether the effect can be given that: what an earlier version kept as values is taken by one that has a block,
    /// too. Looks at the bytes alone.
    static bool IsFit(const StateEnvelope& state, const Vst2Instance& instance);
    /// Gives the effect what is fit. False when it throws.
    static bool Write(const StateEnvelope& state, Vst2Instance& instance);
};

}  // namespace zelaudiofilterhost
