#pragma once

#include <string>

namespace zelaudiofilterhost {

/// Why the file at `path` (UTF-8) cannot be a library that this process loads, in plain words, or an empty text when
/// nothing speaks against it. Reads its headers only, never waits (pipes and devices are not opened), and believes no
/// number in it. Any thread.
///
/// Loaders map a cut-off library and die of it on its first use, or say no more than that it is bad; both is found out
/// here.
std::string FindLoadObstacle(const std::string& path);

}  // namespace zelaudiofilterhost
