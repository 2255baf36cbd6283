#include "Vst3View.h"

namespace zelaudiofilterhost {

Vst3Ptr<Steinberg::IPlugView> MakeVst3View(Steinberg::Vst::IEditController& controller) {
    typedef Vst3Ptr<Steinberg::IPlugView> ViewPtr;
    ViewPtr view = ViewPtr::Adopt(controller.createView(Steinberg::Vst::ViewType::kEditor));
    if (view && view->isPlatformTypeSupported(GetVst3WindowType()) != Steinberg::kResultTrue) view.Reset();
    return view;
}

}  // namespace zelaudiofilterhost
