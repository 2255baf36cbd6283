// Works without functions to start and end with, as modules may on Windows.
#include "support/Vst3Plugin.h"

ZEL_VST3_FACTORY {
    static zeltestplugins::Vst3Factory factory({{.name = "Zel Bare 3", .id = zeltestplugins::MakeId(90)}});
    return &factory;
}
