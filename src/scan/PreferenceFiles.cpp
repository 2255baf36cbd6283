#include "scan/PreferenceFiles.h"

#include <zelaudiofilterhost/BannedPluginManager.h>
#include <zelaudiofilterhost/PluginModuleInfoManager.h>

namespace zelaudiofilterhostui {

using zelcore::filesupport::Dir;
using zelcore::filesupport::File;

File GetCatalogueFile() {
    return File(Dir::PrefDir(), zelaudiofilterhost::PluginModuleInfoManager::GetInstance().GetSettingsFileName());
}

File GetBanListFile() {
    return File(Dir::PrefDir(), zelaudiofilterhost::BannedPluginManager::GetInstance().GetSettingsFileName());
}

File GetPermanentBanListFile() {
    return File(Dir::PrefDir(),
                zelaudiofilterhost::BannedPluginManager::GetInstance().GetPermanentBannedSettingsFileName());
}

}  // namespace zelaudiofilterhostui
