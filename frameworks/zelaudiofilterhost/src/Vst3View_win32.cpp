#include "Vst3View.h"

namespace zelaudiofilterhost {

Steinberg::FIDString GetVst3WindowType() { return Steinberg::kPlatformTypeHWND; }

}  // namespace zelaudiofilterhost
