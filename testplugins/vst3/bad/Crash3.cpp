// Crashes when it is asked for its factory.
#include "support/Misbehaviour.h"
#include "support/Vst3Plugin.h"

ZEL_VST3_MODULE

ZEL_VST3_FACTORY {
    zeltestplugins::Crash();
    return nullptr;
}
