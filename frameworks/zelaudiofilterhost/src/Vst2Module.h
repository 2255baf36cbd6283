#pragma once

#include <string>

#include "SharedLibrary.h"
#include "Vst2Abi.h"

namespace zelaudiofilterhost {

/// A loaded VST2 module. Lives longer than every Vst2Instance made of it. Main thread.
class Vst2Module {
public:
    /// Loads the library at the full path `path` (UTF-8) and finds its entry. Throws PluginLoadError.
    explicit Vst2Module(const std::string& path);

    /// Has the module make an effect: the component of that id, or with 0 the only one or the shell. The effect is not
    /// opened yet. Throws PluginLoadError when nothing comes back that is an effect.
    vst2::Effect& MakeEffect(std::int32_t componentId) const;

private:
    SharedLibrary mLibrary;
    vst2::Entry mEntry;
};

}  // namespace zelaudiofilterhost
