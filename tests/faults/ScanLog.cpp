#include "ScanLog.h"

#include <fstream>
#include <map>
#include <sstream>

namespace zelfaults {

ScanLog::ScanLog(const std::string& path, bool isHeard) {
    struct Scanner {
        std::string about;
        std::string before;
        bool isSent = false;
    };
    std::map<std::string, Scanner> scanners;
    std::ifstream file(path);
    for (std::string line; std::getline(file, line);) {
        std::istringstream words(line);
        std::string process, what, locator;
        words >> process >> what;
        std::getline(words, locator);
        const std::string plugin = locator.substr(locator.rfind('|') + 1);
        Scanner& scanner = scanners[process];
        if (what == "about") scanner = {plugin, scanner.about, false};
        if (what == "sent") scanner.isSent = true;
    }
    for (const auto& [process, scanner] : scanners) {
        workedOn.insert(scanner.about);
        if (!isHeard || !scanner.isSent) workedOn.insert(scanner.before);
    }
}

}  // namespace zelfaults
