#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>

#include <zelcore/ustring.h>

namespace zelaudiofilterhost {

/// A file or folder that a walk comes across.
struct WalkEntry {
    zelcore::ustring path;  ///< full path that its links lead to
    zelcore::ustring name;  ///< as it is called where it was found; that of a link, not of what it leads to
    bool isFolder = false;
    std::uint64_t size = 0;             ///< bytes; 0 for a folder
    std::int64_t modificationTime = 0;  ///< milliseconds since 1970 UTC
};

/// How deep a walk goes below its start, and how many names it looks at in all. What lies beyond is not visited.
constexpr int kMaxWalkDepth = 32;
constexpr std::size_t kMaxWalkEntries = 100000;

/// Visits `root` and, when it is a folder, what is below it: regular files and folders, those behind links too, the
/// names of each folder in the order of their bytes. `visit` says of a folder whether to go into it. No folder is
/// entered twice, so links that lead back are harmless. Opens no file; passes over what cannot be read, what is neither
/// file nor folder, and names that are not valid text. A relative root has nothing in it.
void WalkFolder(const zelcore::ustring& root, const std::function<bool(const WalkEntry&)>& visit);

/// Whether anything of that name is there (links followed).
bool PathExists(const zelcore::ustring& path);

}  // namespace zelaudiofilterhost
