#pragma once

#include <pluginterfaces/vst/ivsthostapplication.h>

#include "Vst3Object.h"
#include "Vst3RunLoop.h"

namespace zelaudiofilterhost {

/// The host as one instance of a VST3 class sees it. It answers as the process's Vst3HostContext does, and has a run
/// loop of the instance's own: what the plug-in leaves registered there goes with the instance. The plug-in may keep it
/// longer. Any thread.
class Vst3InstanceContext final : public Vst3Object<Vst3InstanceContext, Steinberg::Vst::IHostApplication> {
public:
    static const Steinberg::TUID& InterfaceId() { return Steinberg::Vst::IHostApplication_iid; }

    Vst3RunLoop& GetRunLoop() { return mRunLoop; }

    Steinberg::tresult PLUGIN_API getName(Steinberg::Vst::String128 name) override;
    Steinberg::tresult PLUGIN_API createInstance(Steinberg::TUID classId, Steinberg::TUID interfaceId,
                                                 void** object) override;
    Steinberg::tresult PLUGIN_API queryInterface(const Steinberg::TUID id, void** object) override;

private:
    Vst3RunLoop mRunLoop;
};

}  // namespace zelaudiofilterhost
