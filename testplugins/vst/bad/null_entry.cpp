// Has an entry that makes nothing, as plug-ins without a licence do.
#include "support/Vst2Plugin.h"

ZEL_VST2_ENTRY { return nullptr; }
