#pragma once

namespace zelaudiofilterhost {

/// The plug-in formats. The numbers stand in files and in the view factory's rules: they never change.
enum TechnologyType {
    kTechnologyNone = 0,
    kTechnologyBuiltIn = 1,  ///< effects that a host brings itself; no files
    kTechnologyVST = 2,
    kTechnologyVST3 = 3,
    kTechnologyAU = 4
};

}  // namespace zelaudiofilterhost
