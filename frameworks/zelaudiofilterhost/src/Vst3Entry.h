#pragma once

#include <functional>
#include <string>

#include <zelaudiofilterhost/PluginDescription.h>

#include "SharedLibrary.h"

namespace zelaudiofilterhost {

/// The functions that a VST3 module starts and ends with; empty where the platform lets it go without.
struct Vst3Entry {
    std::function<bool()> start;
    std::function<bool()> end;
};

/// A function that a VST3 module has to have. Throws PluginLoadError when it has none of that name.
template <typename Function>
Function RequireVst3Function(const SharedLibrary& library, const char* name) {
    const SharedLibrary::Function function = library.FindFunction(name);
    if (function == nullptr) throw PluginLoadError(std::string("has no VST3 entry point (") + name + " is missing)");
    return reinterpret_cast<Function>(function);
}

/// Finds them, and calls none. Throws PluginLoadError when one is missing that the platform asks for.
Vst3Entry FindVst3Entry(const SharedLibrary& library);

}  // namespace zelaudiofilterhost
