#include <zelaudiofilterhost/PluginModuleInfo.h>

#include <algorithm>
#include <stdexcept>

#include <zelcore/File.h>

#include "PluginModuleInfoManagerImpl.h"

namespace zelaudiofilterhost {

namespace {

void Limit(ustring& text) {
    if (text.size() > PluginComponentInfo::kMaxTextLength) text.resize(PluginComponentInfo::kMaxTextLength);
}

void Limit(std::vector<PluginBusInfo>& buses) {
    if (buses.size() > PluginComponentInfo::kMaxBuses) buses.resize(PluginComponentInfo::kMaxBuses);
    for (PluginBusInfo& bus : buses) {
        Limit(bus.name);
        bus.channelCount = std::clamp(bus.channelCount, 0, PluginComponentInfo::kMaxChannels);
    }
}

void Limit(PluginComponentInfo& component) {
    for (ustring* text : {&component.componentId, &component.subcomponent, &component.name, &component.vendor,
                          &component.version, &component.category}) {
        Limit(*text);
    }
    component.parameterCount = std::clamp(component.parameterCount, 0, PluginComponentInfo::kMaxParameters);
    Limit(component.inputBuses);
    Limit(component.outputBuses);
}

}  // namespace

PluginModuleInfo::PluginModuleInfo(const PluginLocator& locator, const ustring& name,
                                   const PluginFingerprint& fingerprint,
                                   const std::vector<PluginComponentInfo>& components)
    : mLocator(locator), mFingerprint(fingerprint), mName(name), mEnabled(true) {
    if (components.empty()) throw std::invalid_argument("a plug-in module without components");
    mComponents.assign(components.begin(),
                       components.begin() + static_cast<std::ptrdiff_t>(std::min(components.size(), kMaxComponents)));
    for (PluginComponentInfo& component : mComponents) Limit(component);
    if (mName.empty()) mName = mComponents.front().name;
    if (mName.empty()) mName = zelcore::filesupport::File(locator.GetPath()).GetTitle();
    if (mName.empty()) mName = locator.GetPath();
    Limit(mName);
}

PluginModuleInfo::~PluginModuleInfo() = default;

bool PluginModuleInfo::HasAnyNonSynthEffect() const {
    return std::any_of(mComponents.begin(), mComponents.end(),
                       [](const PluginComponentInfo& component) { return !component.isInstrument; });
}

void PluginModuleInfo::SetEnabled(bool enabled) {
    if (enabled == mEnabled) return;
    mEnabled = enabled;
    PluginModuleInfoManager::GetInstance().mImpl->catalogue.NoteChange(*this);
}

}  // namespace zelaudiofilterhost
