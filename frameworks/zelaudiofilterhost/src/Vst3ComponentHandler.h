#pragma once

#include <pluginterfaces/vst/ivsteditcontroller.h>

#include "Vst3Object.h"

namespace zelaudiofilterhost {

/// What an edit controller reports its changes to while it is only looked at: it hears everything and does nothing.
/// Controllers may count on having one.
class Vst3ComponentHandler final : public Vst3Object<Vst3ComponentHandler, Steinberg::Vst::IComponentHandler> {
public:
    static const Steinberg::TUID& InterfaceId() { return Steinberg::Vst::IComponentHandler_iid; }

    Steinberg::tresult PLUGIN_API beginEdit(Steinberg::Vst::ParamID) override { return Steinberg::kResultOk; }
    Steinberg::tresult PLUGIN_API performEdit(Steinberg::Vst::ParamID, Steinberg::Vst::ParamValue) override {
        return Steinberg::kResultOk;
    }
    Steinberg::tresult PLUGIN_API endEdit(Steinberg::Vst::ParamID) override { return Steinberg::kResultOk; }
    Steinberg::tresult PLUGIN_API restartComponent(Steinberg::int32) override { return Steinberg::kResultFalse; }
};

}  // namespace zelaudiofilterhost
