#include "CatalogueText.h"

#include "XmlText.h"

namespace zelaudiofilterhost {

namespace {

void AppendText(std::string& out, std::string_view name, const ustring& value) {
    if (!value.empty()) AppendAttribute(out, name, value);
}

void AppendFlag(std::string& out, std::string_view name, bool value) {
    out.push_back(' ');
    out += name;
    out += value ? "=\"1\"" : "=\"0\"";
}

void AppendLocator(std::string& out, const PluginLocator& locator) {
    AppendAttribute(out, "technology", std::int64_t(locator.GetTechnologyType()));
    AppendAttribute(out, "path", locator.GetPath());
    AppendText(out, "subcomponent", locator.GetSubcomponent());
}

void AppendFingerprint(std::string& out, const PluginFingerprint& fingerprint) {
    AppendAttribute(out, "size", fingerprint.size);
    AppendAttribute(out, "time", fingerprint.modificationTime);
}

void AppendBuses(std::string& out, std::string_view element, const std::vector<PluginBusInfo>& buses) {
    for (const PluginBusInfo& bus : buses) {
        out.push_back('<');
        out += element;
        AppendText(out, "name", bus.name);
        AppendAttribute(out, "channels", std::int64_t(bus.channelCount));
        if (bus.isAuxiliary) AppendFlag(out, "auxiliary", true);
        out += "/>";
    }
}

void AppendComponent(std::string& out, const PluginComponentInfo& component) {
    out += "<component";
    AppendText(out, "id", component.componentId);
    AppendText(out, "subcomponent", component.subcomponent);
    AppendText(out, "name", component.name);
    AppendText(out, "vendor", component.vendor);
    AppendText(out, "version", component.version);
    AppendText(out, "category", component.category);
    AppendFlag(out, "instrument", component.isInstrument);
    AppendFlag(out, "editor", component.hasEditor);
    AppendAttribute(out, "parameters", std::int64_t(component.parameterCount));
    if (component.uniqueId != 0) AppendAttribute(out, "uniqueid", std::uint64_t(component.uniqueId));
    if (component.versionNumber != 0) AppendAttribute(out, "versionnumber", std::int64_t(component.versionNumber));
    out.push_back('>');
    AppendBuses(out, "input", component.inputBuses);
    AppendBuses(out, "output", component.outputBuses);
    out += "</component>";
}

}  // namespace

void AppendModuleLine(std::string& out, const PluginModuleInfo& info) {
    // Room for the header, the longest locator and the end of the text, each of its characters escaped.
    constexpr std::size_t kMaxComponentText = kMaxConfigurationText - (std::size_t(1) << 20);
    out += "<module";
    AppendLocator(out, info.GetLocator());
    AppendAttribute(out, "name", info.GetName());
    AppendFlag(out, "enabled", info.IsEnabled());
    AppendFingerprint(out, info.GetFingerprint());
    out.push_back('>');
    const std::size_t begin = out.size();
    for (const PluginComponentInfo& component : info.GetComponents()) {
        const std::size_t before = out.size();
        AppendComponent(out, component);
        if (out.size() - begin <= kMaxComponentText) continue;
        out.resize(before);
        break;
    }
    out += "</module>\n";
}

void AppendFailedLine(std::string& out, const PluginScanFailure& failure, bool isDisabledByUser) {
    out += "<failed";
    AppendLocator(out, failure.locator);
    if (isDisabledByUser) AppendFlag(out, "enabled", false);
    AppendFingerprint(out, failure.fingerprint);
    AppendText(out, "reason", failure.reason);
    out += "/>\n";
}

void AppendChoiceLine(std::string& out, const PluginLocator& locator) {
    out += "<choice";
    AppendLocator(out, locator);
    AppendFlag(out, "enabled", false);
    out += "/>\n";
}

void AppendRemovedLine(std::string& out, const PluginLocator& locator) {
    out += "<removed";
    AppendLocator(out, locator);
    out += "/>\n";
}

void AppendTechnologyLine(std::string& out, TechnologyType technology, const std::vector<ustring>& folders) {
    out += "<technology";
    AppendAttribute(out, "type", std::int64_t(technology));
    out.push_back('>');
    for (const ustring& folder : folders) {
        out += "<folder";
        AppendAttribute(out, "path", folder);
        out += "/>";
    }
    out += "</technology>\n";
}

void AppendChangesLine(std::string& out, std::size_t lines) {
    out += "<changes";
    AppendAttribute(out, "lines", std::uint64_t(lines));
    out += "/>\n";
}

}  // namespace zelaudiofilterhost
