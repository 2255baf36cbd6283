#pragma once

#include <memory>

#include <zelcore/ustring.h>

#include "Vst2Abi.h"

namespace zelaudiofilterhost {

class Vst2Module;

/// One opened effect of a VST2 module; closing it deletes it. Lives shorter than its module. Main thread, and the
/// plug-in's exceptions come out as PluginLoadError.
class Vst2Instance {
public:
    /// Makes the component of that id (0: the only one, or the shell) and opens it. Throws PluginLoadError.
    Vst2Instance(const Vst2Module& module, std::int32_t componentId);

    /// The plug-in's own struct; it may change whenever the plug-in's code runs, and nothing in it can be believed.
    const vst2::Effect& GetEffect() const { return *mEffect; }
    /// The same for the functions in it, which may be null and are called with it.
    vst2::Effect& GetEffect() { return *mEffect; }

    std::intptr_t Dispatch(vst2::EffectOperation operation, std::int32_t index = 0, std::intptr_t value = 0,
                           void* pointer = nullptr, float number = 0.0f) const;

    /// The answer to one of the questions that fill a text buffer; empty when there is none. The buffer is far larger
    /// than the book says, because plug-ins do not read it. `answer` (may be null) gets the number that came back.
    zelcore::ustring GetText(vst2::EffectOperation operation, std::intptr_t* answer = nullptr) const;
    /// The same for the questions about one of several parameters or channels.
    zelcore::ustring GetTextOf(vst2::EffectOperation operation, std::int32_t index,
                               std::intptr_t* answer = nullptr) const;

private:
    struct Closer {
        void operator()(vst2::Effect* effect) const noexcept;
    };

    std::unique_ptr<vst2::Effect, Closer> mEffect;
};

}  // namespace zelaudiofilterhost
