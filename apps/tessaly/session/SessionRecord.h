#pragma once

#include <string>
#include <vector>

#include "EffectRecord.h"

namespace tessaly {

/// A session as it is kept on disk. Paths are UTF-8 and absolute; empty where there is no such file.
struct SessionRecord {
    std::string soundPath;
    std::string sideChainPath;
    bool isLooping = false;
    std::vector<EffectRecord> effects;

    bool operator==(const SessionRecord&) const = default;
};

}  // namespace tessaly
