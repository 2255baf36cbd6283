#pragma once

#include <memory>

#include <pluginterfaces/vst/ivstcomponent.h>
#include <pluginterfaces/vst/ivsteditcontroller.h>
#include <pluginterfaces/vst/ivstmessage.h>

#include "Vst3InstanceContext.h"
#include "Vst3Module.h"
#include "Vst3Ptr.h"

namespace zelaudiofilterhost {

/// One effect of a VST3 module, ready to be asked: its component, its edit controller if it has one, the two connected.
/// Main thread. The pointers' methods are the plug-in's code: call them through CallPlugin.
class Vst3Instance {
public:
    /// Makes and initialises the effect; `handler` hears the controller's changes and outlives the instance. Throws
    /// PluginLoadError; what was made by then is ended and released in order.
    Vst3Instance(std::shared_ptr<Vst3Module> module, const Vst3Class& effectClass,
                 Steinberg::Vst::IComponentHandler& handler);
    ~Vst3Instance();
    Vst3Instance(const Vst3Instance&) = delete;
    Vst3Instance& operator=(const Vst3Instance&) = delete;

    Steinberg::Vst::IComponent& GetComponent() const { return *mComponent.object.Get(); }
    /// Null for a plug-in that has none, and for one whose controller does not start.
    Steinberg::Vst::IEditController* GetController() const { return mController.object.Get(); }

private:
    /// An object and whether it was initialised, and by that has to be ended before it is released.
    template <typename T>
    struct Part {
        Vst3Ptr<T> object;
        bool initialized = false;

        ~Part() { End(); }
        bool Initialize(Steinberg::FUnknown* context);
        void End() noexcept;
    };

    void MakeComponent(const Vst3Class& effectClass);
    void MakeController();
    void Connect();
    void Disconnect() noexcept;
    /// Undoes what connects the halves with each other and with the host, and ends them.
    void End() noexcept;

    // In this order: they go from the last to the first.
    std::shared_ptr<Vst3Module> mModule;
    Vst3Ptr<Vst3InstanceContext> mContext;
    Part<Steinberg::Vst::IComponent> mComponent;
    Part<Steinberg::Vst::IEditController> mController;
    Vst3Ptr<Steinberg::Vst::IConnectionPoint> mComponentPoint;
    Vst3Ptr<Steinberg::Vst::IConnectionPoint> mControllerPoint;
};

}  // namespace zelaudiofilterhost
