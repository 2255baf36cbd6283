#pragma once

#include <pluginterfaces/vst/ivsthostapplication.h>
#include <pluginterfaces/vst/ivstpluginterfacesupport.h>

namespace zelaudiofilterhost {

/// The host as VST3 modules see it, whichever instance asks: its name, the messages and attribute lists that it makes
/// for them, and which of their interfaces it makes use of. One for the whole process and never gone, because plug-ins
/// keep it longer than they should. Any thread.
class Vst3HostContext final : public Steinberg::Vst::IHostApplication, public Steinberg::Vst::IPlugInterfaceSupport {
public:
    static Vst3HostContext& GetInstance();
    /// The same as what factories take.
    static Steinberg::FUnknown* GetUnknown();

    Steinberg::tresult PLUGIN_API getName(Steinberg::Vst::String128 name) override;
    Steinberg::tresult PLUGIN_API createInstance(Steinberg::TUID classId, Steinberg::TUID interfaceId,
                                                 void** object) override;
    Steinberg::tresult PLUGIN_API isPlugInterfaceSupported(const Steinberg::TUID interfaceId) override;

    Steinberg::tresult PLUGIN_API queryInterface(const Steinberg::TUID interfaceId, void** object) override;
    Steinberg::uint32 PLUGIN_API addRef() override { return 1; }
    Steinberg::uint32 PLUGIN_API release() override { return 1; }

private:
    Vst3HostContext() = default;
};

}  // namespace zelaudiofilterhost
