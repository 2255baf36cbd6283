#include "Vst3Instance.h"

#include <pluginterfaces/vst/ivstaudioprocessor.h>
#include <zelaudiofilterhost/PluginDescription.h>

#include "PluginCall.h"

namespace zelaudiofilterhost {

using Steinberg::kResultOk;
using Steinberg::Vst::IAudioProcessor;
using Steinberg::Vst::IComponent;
using Steinberg::Vst::IConnectionPoint;
using Steinberg::Vst::IEditController;

template <typename T>
bool Vst3Instance::Part<T>::Initialize(Steinberg::FUnknown* context) {
    initialized =
        CallPlugin("when it was opened", [this, context] { return object->initialize(context) == kResultOk; });
    return initialized;
}

template <typename T>
void Vst3Instance::Part<T>::End() noexcept {
    if (initialized) CallPluginQuietly([this] { object->terminate(); });
    initialized = false;
}

Vst3Instance::Vst3Instance(std::shared_ptr<Vst3Module> module, const Vst3Class& effectClass,
                           Steinberg::Vst::IComponentHandler& handler)
    : mModule(std::move(module)), mContext(Vst3Ptr<Vst3InstanceContext>::Adopt(new Vst3InstanceContext)) {
    try {
        MakeComponent(effectClass);
        CallPlugin("when it was opened", [this, &handler] {
            MakeController();
            if (!mController.object) return;
            mController.object->setComponentHandler(&handler);
            Connect();
        });
    } catch (...) {
        // The destructor of what was never made does not run, and its halves may hold on to each other already.
        End();
        throw;
    }
}

Vst3Instance::~Vst3Instance() { End(); }

void Vst3Instance::End() noexcept {
    Disconnect();
    if (mController.object) {
        CallPluginQuietly([this] { mController.object->setComponentHandler(nullptr); });
    }
    mController.End();
    mComponent.End();
    // Ended and not gone yet: what is still registered is often a part of these objects, counted or not.
    mContext->GetRunLoop().Stop();
}

void Vst3Instance::MakeComponent(const Vst3Class& effectClass) {
    mComponent.object = mModule->Make<IComponent>(effectClass.id.data(), Steinberg::Vst::IComponent_iid);
    if (!mComponent.object) throw PluginLoadError("could not make its effect");
    if (!mComponent.Initialize(mContext.Get())) throw PluginLoadError("refused to be opened");
    const bool processes = CallPlugin("when it was opened", [this] {
        return bool(Vst3Ptr<IAudioProcessor>::Query(mComponent.object.Get(), Steinberg::Vst::IAudioProcessor_iid));
    });
    if (!processes) throw PluginLoadError("its effect processes no audio");
}

void Vst3Instance::MakeController() {
    // One object may be both; it is initialised by now.
    mController.object = Vst3Ptr<IEditController>::Query(mComponent.object.Get(), Steinberg::Vst::IEditController_iid);
    if (mController.object) return;
    Steinberg::TUID classId = {};
    if (mComponent.object->getControllerClassId(classId) != kResultOk) return;
    mController.object = mModule->Make<IEditController>(classId, Steinberg::Vst::IEditController_iid);
    if (mController.object && !mController.Initialize(mContext.Get())) mController.object.Reset();
}

void Vst3Instance::Connect() {
    // An object that is both halves needs no wire to itself.
    if (!mController.initialized) return;
    mComponentPoint = Vst3Ptr<IConnectionPoint>::Query(mComponent.object.Get(), Steinberg::Vst::IConnectionPoint_iid);
    mControllerPoint = Vst3Ptr<IConnectionPoint>::Query(mController.object.Get(), Steinberg::Vst::IConnectionPoint_iid);
    if (!mComponentPoint || !mControllerPoint) return;
    mComponentPoint->connect(mControllerPoint.Get());
    mControllerPoint->connect(mComponentPoint.Get());
}

void Vst3Instance::Disconnect() noexcept {
    if (!mComponentPoint || !mControllerPoint) return;
    CallPluginQuietly([this] { mComponentPoint->disconnect(mControllerPoint.Get()); });
    CallPluginQuietly([this] { mControllerPoint->disconnect(mComponentPoint.Get()); });
}

}  // namespace zelaudiofilterhost
