#include "SystemFile.h"

#include <cerrno>
#include <cstdio>

namespace tessaly {

namespace {

std::error_code TryToOpen(const std::filesystem::path& path, const char* mode) {
    std::FILE* const file = std::fopen(path.c_str(), mode);
    if (file == nullptr) return std::error_code(errno, std::generic_category());
    std::fclose(file);
    return {};
}

}  // namespace

std::error_code SystemFile::CreateNew(const std::filesystem::path& path) { return TryToOpen(path, "wbx"); }

std::error_code SystemFile::CheckWritable(const std::filesystem::path& path) { return TryToOpen(path, "ab"); }

}  // namespace tessaly
