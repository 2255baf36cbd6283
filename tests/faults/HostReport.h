#pragma once

#include <map>
#include <set>
#include <string>

namespace zelfaults {

/// What a profile holds.
struct HostState {
    std::map<std::string, bool> entries;  ///< the working plug-ins' paths, and whether they are switched on
    std::set<std::string> failed;
    std::map<std::string, std::string> bans;  ///< with their reasons
    bool hasPermanentBans = false;
};

/// What "fault_host look" said.
struct HostReport {
    explicit HostReport(const std::string& output);

    bool areFilesWhole = false;  ///< the catalogue and both ban lists could be read
    bool isComplete = false;     ///< it came to its end
    HostState files;             ///< as they were found
    HostState started;           ///< when the application has started
    HostState scanned;           ///< after an undisturbed scan
};

}  // namespace zelfaults
