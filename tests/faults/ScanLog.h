#pragma once

#include <set>
#include <string>

namespace zelfaults {

/// What the scanner processes of a round said, see ReplyFaults.
struct ScanLog {
    /// `isHeard`: what a scanner sent has reached its client. Otherwise the client may have closed the connection
    /// before it came to the last of it, and what the scanner named before counts as well.
    ScanLog(const std::string& path, bool isHeard);

    /// The plug-ins that a scanner was working on when it ended, or had just named: those that may be blamed for it.
    std::set<std::string> workedOn;
};

}  // namespace zelfaults
