#include "PluginReload.h"

#include <algorithm>
#include <filesystem>
#include <vector>

#include <zelaudiofilterhost/AudioFilterDescriptorManager.h>
#include <zelaudiofilterhost/BannedPluginManager.h>
#include <zelaudiofilterhost/PluginDescription.h>
#include <zelaudiofilterhost/PluginModuleInfoManager.h>
#include <zelcore/Utf.h>

#include "FilePath.h"

namespace tessaly {

using zelaudiofilterhost::AudioFilterDescriptor;
using zelaudiofilterhost::AudioFilterDescriptorManager;
using zelaudiofilterhost::BannedPluginManager;
using zelaudiofilterhost::PluginLoadError;
using zelaudiofilterhost::PluginLocator;
using zelaudiofilterhost::PluginModuleInfoManager;

namespace {

PluginReload::Result Make(const PluginReload::DescriptorPtr& descriptor) {
    const PluginLocator locator = descriptor->GetLocator();
    const BannedPluginManager& banned = BannedPluginManager::GetInstance();
    if (banned.IsBanned(PluginLocator(locator.GetTechnologyType(), locator.GetPath())) ||
        banned.IsComponentBanned(locator, descriptor->GetComponent()))
        throw PluginLoadError("is banned");
    return {descriptor, descriptor->CreateFilter()};
}

/// As its links lead to; without them where they lead nowhere.
std::filesystem::path Resolve(const zelcore::ustring& path) {
    const zelcore::utf8string utf8 = zelcore::utility::UTF16to8(path);
    std::error_code failed;
    const std::filesystem::path full =
        std::filesystem::weakly_canonical(ToFilePath(std::string(utf8.begin(), utf8.end())), failed);
    return failed ? std::filesystem::path() : full;
}

bool IsBelow(const std::filesystem::path& path, const std::filesystem::path& folder) {
    if (path.empty() || folder.empty()) return false;
    return std::mismatch(folder.begin(), folder.end(), path.begin(), path.end()).first == folder.end();
}

bool IsWherePluginsAre(const PluginLocator& module) {
    const PluginModuleInfoManager& catalogue = PluginModuleInfoManager::GetInstance();
    for (auto info = catalogue.PluginInfoBegin(); info != catalogue.PluginInfoEnd(); ++info) {
        const PluginLocator& known = (*info)->GetLocator();
        if (known.GetTechnologyType() == module.GetTechnologyType() && known.GetPath() == module.GetPath()) return true;
    }
    const auto technology = catalogue.GetPluginTechnology(module.GetTechnologyType());
    const std::filesystem::path path = Resolve(module.GetPath());
    return technology && std::any_of(technology->DirectoryBegin(), technology->DirectoryEnd(),
                                     [&path](const auto& folder) { return IsBelow(path, Resolve(folder)); });
}

/// Whether a file may be loaded to see what is in it.
void CheckModule(const PluginLocator& module) {
    const bool isPlugin = module.GetTechnologyType() == zelaudiofilterhost::kTechnologyVST ||
                          module.GetTechnologyType() == zelaudiofilterhost::kTechnologyVST3;
    if (!isPlugin) throw PluginLoadError("is not known");
    if (BannedPluginManager::GetInstance().IsBanned(module)) throw PluginLoadError("is banned");
    if (!IsWherePluginsAre(module))
        throw PluginLoadError("is neither in the list of plug-ins nor in the plug-in folders");
}

PluginReload::Result LoadWhereItWas(const EffectRecord& effect) {
    const PluginLocator module(effect.locator.GetTechnologyType(), effect.locator.GetPath());
    CheckModule(module);
    for (const PluginReload::DescriptorPtr& descriptor : AudioFilterDescriptor::ReadModule(module)) {
        if (descriptor->GetComponent().componentId != effect.componentId) continue;
        const PluginReload::Result result = Make(descriptor);
        // One that is not in the catalogue has the same right to a view.
        AudioFilterDescriptorManager::GetInstance().AddDescriptor(descriptor);
        return result;
    }
    throw PluginLoadError("does not contain this component any more");
}

}  // namespace

PluginReload::Result PluginReload::Load(const EffectRecord& effect) {
    const DescriptorPtr known =
        AudioFilterDescriptorManager::GetInstance().GetComponentDescriptorForID(effect.componentId);
    if (!known) return LoadWhereItWas(effect);
    try {
        return Make(known);
    } catch (const PluginLoadError&) {
        if (effect.locator == known->GetLocator() || effect.locator == PluginLocator()) throw;
        return LoadWhereItWas(effect);
    }
}

}  // namespace tessaly
