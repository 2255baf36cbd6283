#pragma once

#include <zelaudiofilterhost/PluginFingerprint.h>
#include <zelaudiofilterhost/PluginLocator.h>

namespace zelaudiofilterhost {

/// A candidate that was looked at and is no working plug-in. Remembered, so that the next scan of new plug-ins passes
/// it over until its file changes. One that was looked at when there was no memory or no descriptor left for it has no
/// fingerprint, and is tried again.
struct PluginScanFailure {
    /// Which plug-in it is.
    PluginLocator locator;
    /// Its file as it was when it was looked at.
    PluginFingerprint fingerprint;
    ustring reason;  ///< in plain words, in English: "built for another processor (AArch64)"

    /// Equal when all members are.
    bool operator==(const PluginScanFailure&) const = default;
};

}  // namespace zelaudiofilterhost
