#include <zelaudiofilterhost/PluginDescription.h>

#include <set>

#include <zelaudiofilterhost/PluginModuleInfo.h>
#include <zelcore/File.h>
#include <zelcore/Utf.h>

#include "ProcessStateGuard.h"
#include "Vst2Description.h"
#include "Vst3Description.h"

namespace zelaudiofilterhost {

namespace {

PluginDescription DescribeByTechnology(const PluginLocator& locator) {
    const zelcore::utf8string text = zelcore::utility::UTF16to8(locator.GetPath());
    const std::string path(text.begin(), text.end());
    const ProcessStateGuard guard;
    switch (locator.GetTechnologyType()) {
        case kTechnologyVST:
            return DescribeVst2(path, locator.GetSubcomponent());
        case kTechnologyVST3:
            return DescribeVst3(path, locator.GetSubcomponent());
        case kTechnologyAU:
            throw PluginLoadError("Audio Units work on macOS only");
        default:
            throw PluginLoadError("is of no plug-in format that is known here");
    }
}

/// A second component of the same id could never be told from the first.
void DropDuplicates(std::vector<PluginComponentInfo>& components) {
    std::set<zelcore::ustring> seen;
    std::erase_if(components,
                  [&seen](const PluginComponentInfo& component) { return !seen.insert(component.componentId).second; });
}

}  // namespace

PluginLoadError::PluginLoadError(const std::string& reason) : std::runtime_error(reason) {}

PluginLoadError::~PluginLoadError() = default;

PluginDescription DescribePlugin(const PluginLocator& locator) {
    PluginDescription description = DescribeByTechnology(locator);
    DropDuplicates(description.components);
    if (description.components.size() > kMaxComponents) description.components.resize(kMaxComponents);
    if (description.components.empty()) {
        throw PluginLoadError(locator.GetSubcomponent().empty() ? "contains no effects or instruments"
                                                                : "does not contain this component any more");
    }
    const ustring title = zelcore::filesupport::File(locator.GetPath()).GetTitle();
    for (PluginComponentInfo& component : description.components) {
        if (component.name.empty()) component.name = title;
    }
    if (description.components.size() == 1) {
        description.name.clear();
    } else if (description.name.empty()) {
        description.name = title;
    }
    return description;
}

}  // namespace zelaudiofilterhost
