#pragma once

#include <string>

namespace tessaly {

/// The path from the root, without "." and "..": what a session keeps, so that a change of the working folder changes
/// no file. The file need not be there.
std::string GetFullPath(const std::string& path);

}  // namespace tessaly
