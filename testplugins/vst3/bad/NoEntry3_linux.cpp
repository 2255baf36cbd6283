// Has a factory, but lacks the functions that a module starts and ends with.
#include "support/Vst3Plugin.h"

ZEL_VST3_FACTORY {
    static zeltestplugins::Vst3Factory factory({});
    return &factory;
}
