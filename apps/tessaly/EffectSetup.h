#pragma once

#include <string>

#include <zelaudiofilterhost/AudioFilter.h>

#include "RenderOptions.h"

namespace tessaly {

/// Makes a filter what the command line says of it. Main thread.
class EffectSetup {
public:
    /// The filter is in its track already. Throws std::runtime_error for a parameter or a channel that is not there.
    static void Apply(zelaudiofilterhost::AudioFilter& filter, const RenderOptions::Effect& wanted);

    /// Index of the parameter that is meant: by its number from 1, by its name, or by its name where capitals do not
    /// matter and only one is called so. Throws std::runtime_error with what there is to choose from.
    static int FindParameter(const zelaudiofilterhost::AudioFilter& filter, const std::string& text);
};

}  // namespace tessaly
