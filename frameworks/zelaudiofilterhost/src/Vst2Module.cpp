#include "Vst2Module.h"

#include <zelaudiofilterhost/PluginDescription.h>

#include "PluginCall.h"
#include "Vst2Host.h"

namespace zelaudiofilterhost {

namespace {

vst2::Entry FindEntry(const SharedLibrary& library) {
    SharedLibrary::Function entry = library.FindFunction(vst2::kEntryName);
    // Programs and libraries of all kinds have something called "main", so it has to be this file's own function.
    if (entry == nullptr) entry = library.FindOwnFunction(vst2::kOldEntryName);
    if (entry == nullptr) throw PluginLoadError("has no VST entry point");
    return reinterpret_cast<vst2::Entry>(entry);
}

}  // namespace

Vst2Module::Vst2Module(const std::string& path) : mLibrary(path), mEntry(FindEntry(mLibrary)) {}

vst2::Effect& Vst2Module::MakeEffect(std::int32_t componentId) const {
    const Vst2Host::WantedComponent wanted(componentId);
    vst2::Effect* const effect = CallPlugin("in its entry point", [this] { return mEntry(&Vst2Host::Callback); });
    if (effect == nullptr) throw PluginLoadError("its entry point returned nothing");
    if (effect->magic != vst2::kMagic) throw PluginLoadError("its entry point returned something that is no effect");
    if (effect->dispatcher == nullptr) throw PluginLoadError("its effect answers no questions");
    return *effect;
}

}  // namespace zelaudiofilterhost
