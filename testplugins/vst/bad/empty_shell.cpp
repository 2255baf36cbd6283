// A shell with nothing in it.
#include "support/Vst2Plugin.h"

ZEL_VST2_ENTRY {
    using namespace zeltestplugins;
    return (new Vst2Plugin(host, {"Empty Shell", 22, 0, 0, {}, vst2::kCategoryShell}))->GetEffect();
}
