// A module from before version 2.4: its entry is called "main", and the effect has no name of its own.
#include "support/Vst2Plugin.h"

namespace {

using namespace zeltestplugins;

}  // namespace

// C++ keeps the name to itself; the linker does not.
extern "C" ZEL_DLL_EXPORT vst2::Effect* OldEntry(vst2::HostCallback host) asm("main");

vst2::Effect* OldEntry(vst2::HostCallback host) {
    return (new Vst2Plugin(host, {.name = "", .id = 0x5A4F6C64, .inputs = 1, .outputs = 1, .version = 1100}))
        ->GetEffect();
}
