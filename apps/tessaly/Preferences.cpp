#include "Preferences.h"

#include <iostream>

#include <zelaudiofilterhost/BannedPluginManager.h>
#include <zelaudiofilterhost/PluginModuleInfoManager.h>
#include <zelcore/Utf.h>

namespace tessaly {

using zelaudiofilterhost::BannedPluginManager;
using zelaudiofilterhost::PluginModuleInfoManager;
using zelcore::filesupport::Dir;
using zelcore::filesupport::File;

namespace {

void Tell(const File& file, const char* what) {
    std::cerr << "tessaly: " << zelcore::utility::UTF16to8(file.FullPath()) << ": " << what << '\n';
}

}  // namespace

File Preferences::GetCatalogueFile() {
    return File(Dir::PrefDir(), PluginModuleInfoManager::GetInstance().GetSettingsFileName());
}

void Preferences::Load() {
    LoadBanLists();
    LoadCatalogue();
}

void Preferences::LoadBanLists() {
    BannedPluginManager& bans = BannedPluginManager::GetInstance();
    const File permanent(Dir::PrefDir(), bans.GetPermanentBannedSettingsFileName());
    if (permanent.Exists() && !bans.LoadStaticConfiguration(permanent))
        Tell(permanent, "the list of unsupported plug-ins cannot be understood and is not used");
    const File user(Dir::PrefDir(), bans.GetSettingsFileName());
    if (!bans.LoadConfiguration(user))
        Tell(user, "the list of banned plug-ins was damaged; it is kept beside, under another name");
}

void Preferences::LoadCatalogue() {
    const File file = GetCatalogueFile();
    switch (PluginModuleInfoManager::GetInstance().LoadConfiguration(file)) {
        case PluginModuleInfoManager::kLoaded:
        case PluginModuleInfoManager::kMissing:
            break;
        case PluginModuleInfoManager::kRecovered:
            Tell(file, "the catalogue was damaged; what could be read is used, the file is kept under another name");
            break;
        case PluginModuleInfoManager::kKeptAside:
            Tell(file,
                 "the catalogue cannot be understood; it is kept under another name, scan again to fill a new one");
            break;
    }
}

}  // namespace tessaly
