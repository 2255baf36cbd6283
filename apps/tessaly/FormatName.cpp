#include "FormatName.h"

#include <zelaudiofilterhost/PluginModuleInfoManager.h>

namespace tessaly {

zelcore::ustring GetFormatName(zelaudiofilterhost::TechnologyType type) {
    const auto technology = zelaudiofilterhost::PluginModuleInfoManager::GetInstance().GetPluginTechnology(type);
    return technology ? technology->GetName() : zelcore::ustring();
}

}  // namespace tessaly
