// No parameters; passes sound through.
#include "support/Vst2Plugin.h"

namespace {

using namespace zeltestplugins;

}  // namespace

ZEL_VST2_ENTRY { return (new Vst2Plugin(host, {"Zel Plain", 0x5A506C61, 2, 2}))->GetEffect(); }
