// The bare cost of looking at plug-ins: describes every plug-in of a list in this one process, without a catalogue, a
// scanner process or a display of its own around it.
//
//     bare_scan <file with one plug-in locator a line>

#include <chrono>
#include <cstdio>
#include <fstream>
#include <string>
#include <vector>

#include <zelaudiofilterhost/PluginDescription.h>
#include <zelcore/Utf.h>

namespace {

std::vector<zelaudiofilterhost::PluginLocator> ReadList(std::ifstream& stream) {
    std::vector<zelaudiofilterhost::PluginLocator> locators;
    std::string line;
    while (std::getline(stream, line)) {
        if (line.empty()) continue;
        locators.push_back(zelaudiofilterhost::PluginLocator::FromString(zelcore::utility::UTF8to16(line)));
    }
    return locators;
}

bool Describe(const zelaudiofilterhost::PluginLocator& locator) {
    try {
        zelaudiofilterhost::DescribePlugin(locator);
        return true;
    } catch (const zelaudiofilterhost::PluginLoadError&) {
        return false;
    }
}

}  // namespace

int main(int argc, char** argv) {
    std::ifstream stream;
    if (argc == 2) stream.open(argv[1]);
    if (!stream.is_open()) {
        std::fprintf(stderr, "usage: bare_scan <file with one plug-in locator a line>\n");
        return 2;
    }
    const std::vector<zelaudiofilterhost::PluginLocator> locators = ReadList(stream);
    const auto start = std::chrono::steady_clock::now();
    int described = 0;
    for (const zelaudiofilterhost::PluginLocator& locator : locators) described += Describe(locator) ? 1 : 0;
    const std::chrono::duration<double, std::milli> taken = std::chrono::steady_clock::now() - start;
    std::printf("ok %d failed %zu milliseconds %.1f\n", described,
                locators.size() - static_cast<std::size_t>(described), taken.count());
    return 0;
}
