#pragma once

#include <string>
#include <string_view>
#include <vector>

#include <zelaudiofilterhost/PluginModuleInfo.h>
#include <zelaudiofilterhost/PluginScanFailure.h>

namespace zelaudiofilterhost {

/// The writing half of the catalogue's text form (CatalogueReader is the other). Each of these appends one element on
/// one line; of several lines for one plug-in the last one counts.
///
///     <audioplugins version="1">
///     <technology type="2"><folder path="/usr/lib/vst"/></technology>
///     <module technology="3" path="/x/Echo.vst3" name="Echo" enabled="1" size="9" time="7"><component …/></module>
///     <failed technology="2" path="/x/y.so" reason="…"/>     looked at in vain
///     <choice technology="2" path="/x/z.so" enabled="0"/>    not known now; the user had switched it off
///     <removed technology="2" path="/x/old.so"/>             as if no line before had named it
///     <changes lines="2"/>                                   the next 2 lines were saved together: all of them or none
///     </audioplugins>
constexpr std::string_view kCatalogueHeader =
    "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<audioplugins version=\"1\">\n";
constexpr std::string_view kCatalogueTail = "</audioplugins>\n";
constexpr std::string_view kCatalogueRoot = "audioplugins";
constexpr std::string_view kCatalogueVersion = "1";

/// What a whole configuration text, or one line of a file, may be long at most.
constexpr std::size_t kMaxConfigurationText = std::size_t(16) << 20;

/// Components that would make the line longer than a reader takes are left out.
void AppendModuleLine(std::string& out, const PluginModuleInfo& info);
void AppendFailedLine(std::string& out, const PluginScanFailure& failure, bool isDisabledByUser);
void AppendChoiceLine(std::string& out, const PluginLocator& locator);
void AppendRemovedLine(std::string& out, const PluginLocator& locator);
void AppendTechnologyLine(std::string& out, TechnologyType technology, const std::vector<ustring>& folders);
void AppendChangesLine(std::string& out, std::size_t lines);

}  // namespace zelaudiofilterhost
