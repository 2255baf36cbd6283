// Says no when it is started.
#include "support/Vst3Plugin.h"

extern "C" SMTG_EXPORT_SYMBOL bool ModuleEntry(void*) { return false; }
extern "C" SMTG_EXPORT_SYMBOL bool ModuleExit() { return true; }

ZEL_VST3_FACTORY {
    static zeltestplugins::Vst3Factory factory({});
    return &factory;
}
