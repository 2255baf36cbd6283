#pragma once

#include <string>

namespace zelaudiofilterhost {

/// The library to load for the VST3 plug-in at `path` (UTF-8, full): inside a bundle the one for this platform and
/// processor, otherwise the file itself. Throws PluginLoadError when the bundle has none.
std::string FindVst3Library(const std::string& path);

}  // namespace zelaudiofilterhost
