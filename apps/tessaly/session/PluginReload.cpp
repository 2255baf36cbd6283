#include "PluginReload.h"

#include <vector>

#include <zelaudiofilterhost/AudioFilterDescriptorManager.h>
#include <zelaudiofilterhost/BannedPluginManager.h>
#include <zelaudiofilterhost/PluginDescription.h>

namespace tessaly {

using zelaudiofilterhost::AudioFilterDescriptor;
using zelaudiofilterhost::AudioFilterDescriptorManager;
using zelaudiofilterhost::BannedPluginManager;
using zelaudiofilterhost::PluginLoadError;
using zelaudiofilterhost::PluginLocator;

namespace {

PluginReload::Result Make(const PluginReload::DescriptorPtr& descriptor) {
    const PluginLocator locator = descriptor->GetLocator();
    const BannedPluginManager& banned = BannedPluginManager::GetInstance();
    if (banned.IsBanned(PluginLocator(locator.GetTechnologyType(), locator.GetPath())) ||
        banned.IsComponentBanned(locator, descriptor->GetComponent()))
        throw PluginLoadError("is banned");
    return {descriptor, descriptor->CreateFilter()};
}

/// Whether a file may be loaded to see what is in it.
void CheckModule(const PluginLocator& module) {
    const bool isPlugin = module.GetTechnologyType() == zelaudiofilterhost::kTechnologyVST ||
                          module.GetTechnologyType() == zelaudiofilterhost::kTechnologyVST3;
    if (!isPlugin) throw PluginLoadError("is not known");
    if (BannedPluginManager::GetInstance().IsBanned(module)) throw PluginLoadError("is banned");
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
