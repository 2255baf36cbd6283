#pragma once

#include <optional>
#include <string>
#include <vector>

#include <zelaudiofilterhost/ChannelMap.h>
#include <zelmediatypes/AudioChannelLayout.h>

namespace tessaly {

class Arguments;

/// What the user asked `tessaly render` for.
struct RenderOptions {
    /// Longer blocks only cost memory.
    static constexpr int kMaxBlock = 65536;
    /// Of silence behind the sound, in seconds.
    static constexpr double kMaxTail = 3600.0;

    struct Setting {
        std::string parameter;  ///< number from 1, or name
        float value = 0.0f;     ///< normalised
    };
    struct Effect {
        std::string plugin;     ///< a path, a component ID or a name
        std::string component;  ///< --component: which of the effects of a file
        /// --map: the best fit where there is none.
        std::optional<zelaudiofilterhost::ChannelMap> inputMap, outputMap;
        std::vector<Setting> settings;  ///< --set, in order
    };

    std::string input;
    std::string output;
    std::vector<Effect> effects;              ///< --effect, in order
    zelmediatypes::AudioChannelLayout track;  ///< --track; no channels where it was not given
    std::string sideChain;                    ///< --side-chain: a file, or empty
    int block = 512;                          ///< --block, in frames
    double tail = 0.0;                        ///< --tail, in seconds

    /// Takes one option and its value; false when it is none of `render`'s. Throws UsageError.
    bool ParseOption(const std::string& option, Arguments& arguments);
    /// Takes an argument that is no option; false when there is one too many.
    bool ParsePlainArgument(const std::string& argument);
    /// Throws UsageError when something is missing.
    void CheckComplete() const;

private:
    bool ParseEffectOption(const std::string& option, Arguments& arguments);
};

}  // namespace tessaly
