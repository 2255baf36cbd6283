#pragma once

#include <cstdint>

#include <zelcore/ustring.h>

#include <zelaudiofilterhost/Export.h>

namespace zelaudiofilterhost {

/// What a plug-in's file looked like when it was scanned, to notice an update. For a bundle it covers all its files.
/// Values; any thread.
struct ZELAUDIOFILTERHOST_API PluginFingerprint {
    std::uint64_t size = 0;             ///< bytes, of all files together
    std::int64_t modificationTime = 0;  ///< of the newest file, in milliseconds since 1970 UTC

    /// Looks at the file or bundle now; all zero when there is none.
    static PluginFingerprint Take(const zelcore::ustring& path);

    /// Equal when all members are.
    bool operator==(const PluginFingerprint&) const = default;
};

}  // namespace zelaudiofilterhost
