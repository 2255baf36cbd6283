#pragma once

#include <string>

namespace zelaudiofilterhost {

/// Why the file at `path` (UTF-8) cannot be a library that this process loads, in plain words, or an empty text when
/// nothing speaks against it. Reads its headers only, never waits (pipes and devices are not opened), and believes no
/// number in it. Any thread.
///
/// The system's loader maps a cut-off library and dies of a bus error on its first use; that is found here as well.
std::string FindLoadObstacle(const std::string& path);

}  // namespace zelaudiofilterhost
