#include "Vst3InstanceContext.h"

#include <cstring>

#include <pluginterfaces/vst/ivstpluginterfacesupport.h>

#include "Vst3HostContext.h"

namespace zelaudiofilterhost {

Steinberg::tresult PLUGIN_API Vst3InstanceContext::getName(Steinberg::Vst::String128 name) {
    return Vst3HostContext::GetInstance().getName(name);
}

Steinberg::tresult PLUGIN_API Vst3InstanceContext::createInstance(Steinberg::TUID classId, Steinberg::TUID interfaceId,
                                                                  void** object) {
    return Vst3HostContext::GetInstance().createInstance(classId, interfaceId, object);
}

Steinberg::tresult PLUGIN_API Vst3InstanceContext::queryInterface(const Steinberg::TUID id, void** object) {
    if (object != nullptr && mRunLoop.Query(id, object)) return Steinberg::kResultOk;
    if (std::memcmp(id, Steinberg::Vst::IPlugInterfaceSupport_iid, sizeof(Steinberg::TUID)) == 0) {
        return Vst3HostContext::GetInstance().queryInterface(id, object);
    }
    return Vst3Object::queryInterface(id, object);
}

}  // namespace zelaudiofilterhost
