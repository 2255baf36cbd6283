#pragma once

namespace zelaudiofilterhost {

/// The folder of a VST3 bundle that holds the libraries for this platform and processor.
const char* GetVst3PlatformFolder();

/// How the names of the libraries in it end, with the dot.
const char* GetVst3LibraryEnding();

}  // namespace zelaudiofilterhost
