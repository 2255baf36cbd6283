// Crashes in a static constructor, before the host has called anything.
#include "support/Misbehaviour.h"
#include "support/Vst2Plugin.h"

namespace {

using namespace zeltestplugins;

const bool kLoaded = (Crash(), true);

}  // namespace

ZEL_VST2_ENTRY { return kLoaded ? nullptr : (new Vst2Plugin(host, {"Crash", 1, 2, 2}))->GetEffect(); }
