// Returns a struct that is no effect.
#include "support/Vst2Plugin.h"

ZEL_VST2_ENTRY {
    static zelaudiofilterhost::vst2::Effect notAnEffect = {};
    notAnEffect.magic = 0x12345678;
    return &notAnEffect;
}
