// Has no factory to give.
#include "support/Vst3Plugin.h"

ZEL_VST3_MODULE

ZEL_VST3_FACTORY { return nullptr; }
