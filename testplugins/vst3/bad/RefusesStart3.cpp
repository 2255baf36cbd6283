// Says no when it is started.
#include "support/Vst3Plugin.h"

ZEL_VST3_MODULE_WITH(false, true)

ZEL_VST3_FACTORY {
    static zeltestplugins::Vst3Factory factory({});
    return &factory;
}
