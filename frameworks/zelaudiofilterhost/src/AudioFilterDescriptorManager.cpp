#include <zelaudiofilterhost/AudioFilterDescriptorManager.h>

#include <zelaudiofilterhost/PluginModuleInfoManager.h>

namespace zelaudiofilterhost {

namespace {

/// Calls `function` with each component of the catalogue and its module's locator, until it returns false.
template <typename Function>
void ForEachOfCatalogue(Function function) {
    const PluginModuleInfoManager& catalogue = PluginModuleInfoManager::GetInstance();
    for (auto info = catalogue.PluginInfoBegin(); info != catalogue.PluginInfoEnd(); ++info) {
        for (const PluginComponentInfo& component : (*info)->GetComponents()) {
            if (!function((*info)->GetLocator(), component)) return;
        }
    }
}

}  // namespace

AudioFilterDescriptorManager::AudioFilterDescriptorManager() = default;

AudioFilterDescriptorManager::~AudioFilterDescriptorManager() = default;

AudioFilterDescriptorManager& AudioFilterDescriptorManager::GetInstance() {
    static AudioFilterDescriptorManager manager;
    return manager;
}

// The catalogue is gone through each time: it changes without telling, and a view is made for a filter once.
AudioFilterDescriptorManager::DescriptorPtr AudioFilterDescriptorManager::GetComponentDescriptorForID(
    const ustring& componentId) const {
    const auto own = mOwn.find(componentId);
    if (own != mOwn.end()) return own->second;
    DescriptorPtr found;
    ForEachOfCatalogue([&](const PluginLocator& locator, const PluginComponentInfo& component) {
        if (component.componentId == componentId) found = new AudioFilterDescriptor(locator, component);
        return !found;
    });
    return found;
}

std::vector<AudioFilterDescriptorManager::DescriptorPtr> AudioFilterDescriptorManager::GetComponentDescriptors() const {
    std::vector<DescriptorPtr> descriptors;
    for (const auto& [id, descriptor] : mOwn) descriptors.push_back(descriptor);
    ForEachOfCatalogue([&descriptors](const PluginLocator& locator, const PluginComponentInfo& component) {
        descriptors.emplace_back(new AudioFilterDescriptor(locator, component));
        return true;
    });
    return descriptors;
}

void AudioFilterDescriptorManager::AddDescriptor(const DescriptorPtr& descriptor) {
    if (descriptor) mOwn.emplace(descriptor->GetComponent().componentId, descriptor);
}

void AudioFilterDescriptorManager::RemoveDescriptor(const ustring& componentId) { mOwn.erase(componentId); }

}  // namespace zelaudiofilterhost
