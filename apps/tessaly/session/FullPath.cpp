#include "FullPath.h"

#include "FilePath.h"

namespace tessaly {

std::string GetFullPath(const std::string& path) {
    return FromFilePath(std::filesystem::absolute(ToFilePath(path)).lexically_normal());
}

}  // namespace tessaly
