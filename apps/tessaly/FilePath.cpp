#include "FilePath.h"

namespace tessaly {

std::filesystem::path ToFilePath(const std::string& text) {
    return std::filesystem::path(std::u8string(text.begin(), text.end()));
}

std::string FromFilePath(const std::filesystem::path& path) {
    const std::u8string text = path.u8string();
    return std::string(text.begin(), text.end());
}

}  // namespace tessaly
