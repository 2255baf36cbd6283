#include "HostReport.h"

#include <sstream>

namespace zelfaults {

namespace {

void ReadEntry(HostState& state, const std::string& what, const std::string& rest) {
    if (what == "entry") state.entries[rest.substr(2)] = rest[0] == '1';
    if (what == "failed") state.failed.insert(rest);
    if (what == "ban") state.bans[rest.substr(0, rest.find('|'))] = rest.substr(rest.find('|') + 1);
    if (what == "permanent") state.hasPermanentBans = rest == "1";
}

}  // namespace

HostReport::HostReport(const std::string& output) {
    std::map<std::string, HostState*> states = {{"files", &files}, {"started", &started}, {"scanned", &scanned}};
    HostState* state = &files;
    int loaded = 0;
    std::istringstream stream(output);
    for (std::string line; std::getline(stream, line);) {
        const std::string what = line.substr(0, line.find(' '));
        const std::string rest = line.size() > what.size() ? line.substr(what.size() + 1) : std::string();
        if (what == "state") state = states.at(rest);
        if (what.ends_with("-loaded")) loaded += rest == "1" ? 1 : 0;
        if (what == "end") isComplete = true;
        ReadEntry(*state, what, rest);
    }
    areFilesWhole = loaded == 3;
}

}  // namespace zelfaults
