#pragma once

#include <pluginterfaces/gui/iplugview.h>
#include <pluginterfaces/vst/ivsteditcontroller.h>

#include "Vst3Ptr.h"

namespace zelaudiofilterhost {

/// What VST3 calls the native windows of this platform.
Steinberg::FIDString GetVst3WindowType();

/// Makes an editor's view, which is in no window yet. Null when the controller makes none, or none that can be in a
/// window of this platform. The plug-in's exceptions come out.
Vst3Ptr<Steinberg::IPlugView> MakeVst3View(Steinberg::Vst::IEditController& controller);

}  // namespace zelaudiofilterhost
