#include "FullPath.h"

#include <filesystem>

namespace tessaly {

std::string GetFullPath(const std::string& path) { return std::filesystem::absolute(path).lexically_normal().string(); }

}  // namespace tessaly
