// Works, but leaves the process changed: folder, locale, signals, floating-point mode, handlers of the runtime.
#include "support/CarelessProcess.h"
#include "support/Vst2Plugin.h"

namespace {

using namespace zeltestplugins;

}  // namespace

ZEL_VST2_ENTRY {
    ChangeEverything();
    return (new Vst2Plugin(
                host, {.name = "Zel Careless", .id = 0x5A436172, .inputs = 2, .outputs = 2, .version = 0x02000103}))
        ->GetEffect();
}
