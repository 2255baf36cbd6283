#include "Vst3HostContext.h"

#include <algorithm>
#include <cstring>
#include <iterator>

#include <pluginterfaces/gui/iplugview.h>
#include <pluginterfaces/gui/iplugviewcontentscalesupport.h>
#include <pluginterfaces/vst/ivstaudioprocessor.h>
#include <pluginterfaces/vst/ivstcomponent.h>
#include <pluginterfaces/vst/ivsteditcontroller.h>
#include <pluginterfaces/vst/ivstmessage.h>

#include "Vst3AttributeList.h"
#include "Vst3Message.h"

namespace zelaudiofilterhost {

namespace {

constexpr char16_t kHostName[] = u"Zel Audio Filter Host";

bool IsSame(const Steinberg::TUID left, const Steinberg::TUID right) {
    return std::memcmp(left, right, sizeof(Steinberg::TUID)) == 0;
}

}  // namespace

Vst3HostContext& Vst3HostContext::GetInstance() {
    static Vst3HostContext* const instance = new Vst3HostContext;
    return *instance;
}

Steinberg::FUnknown* Vst3HostContext::GetUnknown() {
    return static_cast<Steinberg::Vst::IHostApplication*>(&GetInstance());
}

Steinberg::tresult PLUGIN_API Vst3HostContext::getName(Steinberg::Vst::String128 name) {
    if (name == nullptr) return Steinberg::kInvalidArgument;
    std::copy(std::begin(kHostName), std::end(kHostName), name);
    return Steinberg::kResultOk;
}

Steinberg::tresult PLUGIN_API Vst3HostContext::createInstance(Steinberg::TUID classId, Steinberg::TUID interfaceId,
                                                              void** object) {
    if (object == nullptr) return Steinberg::kInvalidArgument;
    *object = nullptr;
    if (IsSame(classId, Steinberg::Vst::IMessage_iid) && IsSame(interfaceId, Steinberg::Vst::IMessage_iid)) {
        *object = static_cast<Steinberg::Vst::IMessage*>(new Vst3Message);
        return Steinberg::kResultOk;
    }
    if (IsSame(classId, Steinberg::Vst::IAttributeList_iid) &&
        IsSame(interfaceId, Steinberg::Vst::IAttributeList_iid)) {
        *object = static_cast<Steinberg::Vst::IAttributeList*>(new Vst3AttributeList);
        return Steinberg::kResultOk;
    }
    return Steinberg::kResultFalse;
}

Steinberg::tresult PLUGIN_API Vst3HostContext::isPlugInterfaceSupported(const Steinberg::TUID interfaceId) {
    const Steinberg::TUID* const kUsed[] = {&Steinberg::Vst::IComponent_iid,
                                            &Steinberg::Vst::IAudioProcessor_iid,
                                            &Steinberg::Vst::IEditController_iid,
                                            &Steinberg::Vst::IConnectionPoint_iid,
                                            &Steinberg::IPlugView_iid,
                                            &Steinberg::IPlugViewContentScaleSupport_iid};
    const bool used = std::any_of(std::begin(kUsed), std::end(kUsed),
                                  [interfaceId](const Steinberg::TUID* id) { return IsSame(interfaceId, *id); });
    return used ? Steinberg::kResultTrue : Steinberg::kResultFalse;
}

Steinberg::tresult PLUGIN_API Vst3HostContext::queryInterface(const Steinberg::TUID interfaceId, void** object) {
    if (object == nullptr) return Steinberg::kInvalidArgument;
    if (IsSame(interfaceId, Steinberg::FUnknown_iid) || IsSame(interfaceId, Steinberg::Vst::IHostApplication_iid)) {
        *object = static_cast<Steinberg::Vst::IHostApplication*>(this);
        return Steinberg::kResultOk;
    }
    if (IsSame(interfaceId, Steinberg::Vst::IPlugInterfaceSupport_iid)) {
        *object = static_cast<Steinberg::Vst::IPlugInterfaceSupport*>(this);
        return Steinberg::kResultOk;
    }
    *object = nullptr;
    return Steinberg::kNoInterface;
}

}  // namespace zelaudiofilterhost
