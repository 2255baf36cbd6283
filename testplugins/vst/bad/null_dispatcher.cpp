// Returns an effect that cannot be asked anything.
#include "support/Vst2Plugin.h"

ZEL_VST2_ENTRY {
    static zelaudiofilterhost::vst2::Effect effect = {};
    effect.magic = zelaudiofilterhost::vst2::kMagic;
    return &effect;
}
