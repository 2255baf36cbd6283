// Needs a function that no library has.
#include "support/Vst2Plugin.h"

extern "C" int ZelFunctionThatIsNowhere();

ZEL_VST2_ENTRY {
    return ZelFunctionThatIsNowhere() == 0 ? nullptr
                                           : (new zeltestplugins::Vst2Plugin(host, {"Lost", 3, 2, 2}))->GetEffect();
}
