#pragma once

#include <filesystem>
#include <string>

namespace tessaly {

/// The path that UTF-8 text names. Systems with an encoding of their own for narrow text would take it for that.
std::filesystem::path ToFilePath(const std::string& text);

/// A path as UTF-8 text, with the system's own separators.
std::string FromFilePath(const std::filesystem::path& path);

}  // namespace tessaly
