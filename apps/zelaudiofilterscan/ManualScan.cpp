#include "ManualScan.h"

#include <exception>
#include <filesystem>
#include <sstream>

#include <zelaudiofilterhost/PluginDescription.h>
#include <zelcore/Utf.h>

namespace zelaudiofilterscan {

using namespace zelaudiofilterhost;
using zelcore::utility::UTF16to8;
using zelcore::utility::UTF8to16;

namespace {

PluginLocator ToLocator(const std::string& path) {
    std::error_code ignored;
    std::filesystem::path full = std::filesystem::canonical(path, ignored);
    if (full.empty()) full = std::filesystem::absolute(path, ignored);
    const TechnologyType technology = full.extension() == ".vst3" ? kTechnologyVST3 : kTechnologyVST;
    return PluginLocator(technology, UTF8to16(full.string()));
}

void PrintBuses(std::ostream& out, const char* title, const std::vector<PluginBusInfo>& buses) {
    for (const PluginBusInfo& bus : buses)
        out << "  " << title << (bus.isAuxiliary ? " (side-chain): " : ": ") << bus.channelCount << " channels "
            << UTF16to8(bus.name) << '\n';
}

void PrintComponent(std::ostream& out, const PluginComponentInfo& component) {
    out << (component.isInstrument ? "instrument " : "effect ") << UTF16to8(component.name) << '\n'
        << "  id: " << UTF16to8(component.componentId) << '\n'
        << "  vendor: " << UTF16to8(component.vendor) << '\n'
        << "  version: " << UTF16to8(component.version) << '\n'
        << "  parameters: " << component.parameterCount << '\n'
        << "  editor: " << (component.hasEditor ? "yes" : "no") << '\n';
    PrintBuses(out, "input", component.inputBuses);
    PrintBuses(out, "output", component.outputBuses);
}

}  // namespace

std::string DescribeForPeople(const std::string& path, bool& succeeded) {
    std::ostringstream out;
    succeeded = false;
    try {
        const PluginDescription description = DescribePlugin(ToLocator(path));
        for (const PluginComponentInfo& component : description.components) PrintComponent(out, component);
        succeeded = true;
    } catch (const std::exception& error) {
        out << path << ": " << error.what() << '\n';
    }
    return out.str();
}

}  // namespace zelaudiofilterscan
