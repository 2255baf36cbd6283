// Crashes in the entry function.
#include "support/Misbehaviour.h"
#include "support/Vst2Plugin.h"

ZEL_VST2_ENTRY {
    zeltestplugins::Crash();
    return nullptr;
}
