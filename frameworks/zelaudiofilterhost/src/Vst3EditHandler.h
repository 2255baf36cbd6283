#pragma once

#include <pluginterfaces/vst/ivsteditcontroller.h>

#include "Vst3Object.h"
#include "Vst3Parameters.h"

namespace zelaudiofilterhost {

/// What the edit controller of a live filter reports its changes to. Plug-ins keep it longer than they should and call
/// it from whatever thread they are on: it outlives its filter, and what comes from another thread is handed to the
/// main thread.
class Vst3EditHandler final : public Vst3Object<Vst3EditHandler, Steinberg::Vst::IComponentHandler> {
public:
    static const Steinberg::TUID& InterfaceId() { return Steinberg::Vst::IComponentHandler_iid; }

    /// From here on edits go to `parameters`; null for nowhere. Main thread.
    void SetTarget(Vst3Parameters* parameters) { mTarget = parameters; }

    Steinberg::tresult PLUGIN_API beginEdit(Steinberg::Vst::ParamID) override { return Steinberg::kResultOk; }
    Steinberg::tresult PLUGIN_API performEdit(Steinberg::Vst::ParamID id, Steinberg::Vst::ParamValue value) override;
    Steinberg::tresult PLUGIN_API endEdit(Steinberg::Vst::ParamID) override { return Steinberg::kResultOk; }
    /// True for what needs no restart here: names, values and the number of parameters are asked for each time. Other
    /// buses are taken up when the track's format changes the next time; until then processing does not start.
    Steinberg::tresult PLUGIN_API restartComponent(Steinberg::int32 flags) override;

private:
    Vst3Parameters* mTarget = nullptr;
};

}  // namespace zelaudiofilterhost
