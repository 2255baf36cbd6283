// Needs a library that is nowhere to be found.
#include "support/Vst2Plugin.h"

extern "C" int ZelAbsentFunction();

ZEL_VST2_ENTRY {
    return ZelAbsentFunction() == 0 ? nullptr : (new zeltestplugins::Vst2Plugin(host, {"Lost", 2, 2, 2}))->GetEffect();
}
