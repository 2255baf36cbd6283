#include "Vst3View.h"

namespace zelaudiofilterhost {

Steinberg::FIDString GetVst3WindowType() { return Steinberg::kPlatformTypeX11EmbedWindowID; }

}  // namespace zelaudiofilterhost
