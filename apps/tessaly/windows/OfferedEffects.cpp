#include "OfferedEffects.h"

#include <algorithm>
#include <QCollator>

#include <zelaudiofilterhost/PluginModuleInfoManager.h>
#include <zelui/QtBridge.h>

#include "FormatName.h"
#include "LocalText.h"

namespace tessaly {

using zelaudiofilterhost::AudioFilterDescriptor;
using zelaudiofilterhost::PluginComponentInfo;
using zelaudiofilterhost::PluginModuleInfo;
using zelaudiofilterhost::PluginModuleInfoManager;
using zelui::qt::ToQString;

namespace {

void Append(std::vector<OfferedEffect>& effects, const PluginModuleInfo& info, const PluginComponentInfo& component) {
    const QString vendor = ToQString(component.vendor).simplified();
    effects.push_back(
        {boost::intrusive_ptr<AudioFilterDescriptor>(new AudioFilterDescriptor(info.GetLocator(), component)),
         ToQString(GetFormatName(info.GetLocator().GetTechnologyType())),
         vendor.isEmpty() ? LocalText("$$$/tessaly/Effects/NoVendor=Other") : vendor, ToQString(component.name)});
}

}  // namespace

std::vector<OfferedEffect> CollectOfferedEffects() {
    std::vector<OfferedEffect> effects;
    const PluginModuleInfoManager& catalogue = PluginModuleInfoManager::GetInstance();
    for (auto info = catalogue.PluginInfoBegin(); info != catalogue.PluginInfoEnd(); ++info) {
        if (!(*info)->IsEnabled()) continue;
        for (const PluginComponentInfo& component : (*info)->GetComponents()) {
            if (!component.isInstrument) Append(effects, **info, component);
        }
    }
    QCollator order;
    order.setCaseSensitivity(Qt::CaseInsensitive);
    order.setNumericMode(true);
    std::stable_sort(effects.begin(), effects.end(), [&order](const OfferedEffect& a, const OfferedEffect& b) {
        if (a.format != b.format) return a.format > b.format;
        const int vendor = order.compare(a.vendor, b.vendor);
        return vendor != 0 ? vendor < 0 : order.compare(a.name, b.name) < 0;
    });
    return effects;
}

}  // namespace tessaly
