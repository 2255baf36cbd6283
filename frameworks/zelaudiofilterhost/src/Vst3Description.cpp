#include "Vst3Description.h"

#include <algorithm>
#include <optional>

#include <zelcore/Utf.h>

#include "PluginCall.h"
#include "PluginText.h"
#include "Vst3ComponentHandler.h"
#include "Vst3Instance.h"
#include "Vst3Module.h"
#include "Vst3View.h"

namespace zelaudiofilterhost {

namespace {

using Steinberg::int32;
namespace Vst = Steinberg::Vst;

std::vector<PluginBusInfo> DescribeBuses(Vst::IComponent& component, Vst::BusDirection direction) {
    std::vector<PluginBusInfo> buses;
    const int32 count = std::clamp(component.getBusCount(Vst::kAudio, direction), 0,
                                   static_cast<int32>(PluginComponentInfo::kMaxBuses));
    for (int32 index = 0; index < count; ++index) {
        Vst::BusInfo info = {};
        if (component.getBusInfo(Vst::kAudio, direction, index, info) != Steinberg::kResultOk) continue;
        PluginBusInfo bus;
        bus.name = CleanPluginText(info.name, std::size(info.name));
        bus.channelCount = std::clamp(info.channelCount, 0, PluginComponentInfo::kMaxChannels);
        bus.isAuxiliary = info.busType == Vst::kAux;
        buses.push_back(bus);
    }
    return buses;
}

/// Whether a name stands in a list such as "Instrument|Synth".
bool HasSubCategory(const zelcore::ustring& list, const char* name) {
    zelcore::utf8string text = "|";
    text += zelcore::utility::UTF16to8(list);
    text += '|';
    return text.find(zelcore::utf8string("|") + name + "|") != zelcore::utf8string::npos;
}

PluginComponentInfo DescribeClass(const std::shared_ptr<Vst3Module>& module, const Vst3Class& effectClass) {
    PluginComponentInfo info;
    info.componentId = zelcore::utility::AsciiToUTF16("VST3-") + effectClass.GetIdText();
    info.name = effectClass.name;
    info.vendor = effectClass.vendor;
    info.version = effectClass.version;
    info.category = effectClass.subCategories;
    // "Fx|Instrument" is an effect that may serve as an instrument as well.
    info.isInstrument =
        HasSubCategory(effectClass.subCategories, "Instrument") && !HasSubCategory(effectClass.subCategories, "Fx");
    const auto handler = Vst3Ptr<Vst3ComponentHandler>::Adopt(new Vst3ComponentHandler);
    const Vst3Instance instance(module, effectClass, *handler.Get());
    CallPlugin("when it was asked about itself", [&info, &instance] {
        info.inputBuses = DescribeBuses(instance.GetComponent(), Vst::kInput);
        info.outputBuses = DescribeBuses(instance.GetComponent(), Vst::kOutput);
        if (Vst::IEditController* const controller = instance.GetController()) {
            info.parameterCount = std::clamp(controller->getParameterCount(), 0, PluginComponentInfo::kMaxParameters);
            // Nowhere written down; the view has to be made. It is not attached to any window.
            info.hasEditor = bool(MakeVst3View(*controller));
        }
    });
    return info;
}

}  // namespace

PluginDescription DescribeVst3(const std::string& path, const zelcore::ustring& subcomponent) {
    const std::shared_ptr<Vst3Module> module = Vst3Module::Open(path);
    const std::vector<Vst3Class> classes = module->ListClasses();
    PluginDescription description;
    std::optional<PluginLoadError> firstError;
    for (const Vst3Class& effectClass : classes) {
        const zelcore::ustring id = effectClass.GetIdText();
        if (!subcomponent.empty() && id != subcomponent) continue;
        // One that cannot be made costs no other its place.
        try {
            description.components.push_back(DescribeClass(module, effectClass));
            if (classes.size() > 1) description.components.back().subcomponent = id;
        } catch (const PluginLoadError& error) {
            if (!firstError) firstError = error;
        }
    }
    if (description.components.empty() && firstError) throw *firstError;
    return description;
}

}  // namespace zelaudiofilterhost
