// A factory without classes.
#include "support/Vst3Plugin.h"

ZEL_VST3_MODULE

ZEL_VST3_FACTORY {
    static zeltestplugins::Vst3Factory factory({});
    return &factory;
}
