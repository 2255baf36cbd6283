#include <zelaudiofilterhost/PluginFingerprint.h>

#include <algorithm>

#include "FolderWalk.h"

namespace zelaudiofilterhost {

PluginFingerprint PluginFingerprint::Take(const zelcore::ustring& path) {
    PluginFingerprint print;
    bool isFirst = true;
    WalkFolder(path, [&](const WalkEntry& entry) {
        if (!entry.isFolder) {
            print.size += entry.size;
            print.modificationTime =
                isFirst ? entry.modificationTime : std::max(print.modificationTime, entry.modificationTime);
            isFirst = false;
        }
        return true;
    });
    return print;
}

}  // namespace zelaudiofilterhost
