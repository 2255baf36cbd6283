#pragma once

#include <chrono>
#include <string>
#include <vector>

#include <zelaudiofilterhost/PluginLocator.h>
#include <zelcore/Signals.h>
#include <zelcore/ustring.h>

#include "HostFaults.h"

namespace zelfaults {

/// An application that scans, and tells on its output what goes on: a line "progress <path>" for each plug-in that it
/// is shown, "cancelled" when its user gave up, and what HostReport reads.
class FaultHost {
public:
    explicit FaultHost(const std::string& profile);
    ~FaultHost();

    /// Makes a profile with a history: plug-ins elsewhere, some of them switched off, bans of several kinds, and of
    /// each of `folders` the plug-ins that are called "known".
    void Prepare(const std::vector<std::string>& folders);
    /// Scans a folder, what is new and changed or everything; `separate`: in the scanner process.
    void Scan(const std::string& folder, bool everything, bool separate);
    /// Tells what the profile holds, what the start of an application makes of it, and what an undisturbed scan of the
    /// folder then does.
    void Look(const std::string& folder);

private:
    void Start();
    /// Qt paints with threads of its own, and waits for ever for one that the system refuses. They are there before
    /// anything is refused.
    void PaintOnce();
    void OnProgress(const zelcore::ustring& text);
    void OnTimer();
    void SetPatience(std::chrono::milliseconds patience);

    const std::string mProfile;
    HostFaults mFaults;
    unsigned long mReached = 0;
    unsigned long mTimer = 0;
    std::chrono::milliseconds mPatience{0};
    std::chrono::steady_clock::time_point mLastProgress;
    boost::signals::scoped_connection mConnection;
};

}  // namespace zelfaults
