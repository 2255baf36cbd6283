#include "TechnologyAU.h"

#include <zelcore/Utf.h>

#include "PluginFolders.h"

namespace zelaudiofilterhost {

TechnologyType TechnologyAU::GetType() const { return kTechnologyAU; }

ustring TechnologyAU::GetName() const { return zelcore::utility::AsciiToUTF16("AU"); }

std::vector<ustring> TechnologyAU::GetDefaultDirectories() const { return DefaultPluginFolders(kTechnologyAU); }

std::vector<PluginLocator> TechnologyAU::FindPlugins(const ustring&) const { return std::vector<PluginLocator>(); }

}  // namespace zelaudiofilterhost
