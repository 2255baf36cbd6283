#include "PlatformFiles.h"

#include <filesystem>
#include <iterator>

namespace zeltests {

std::size_t CountEntries(const ThrowAwayFolder& folder) {
    const std::filesystem::directory_iterator entries(ToPath(folder.GetPath()));
    return static_cast<std::size_t>(std::distance(begin(entries), end(entries)));
}

}  // namespace zeltests
