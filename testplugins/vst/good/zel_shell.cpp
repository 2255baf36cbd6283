// A shell: one file with three plug-ins, the last an instrument. Which one is made is what the host says it wants.
#include "support/Vst2ShellPlugin.h"

namespace {

using namespace zeltestplugins;

}  // namespace

ZEL_VST2_ENTRY {
    const std::vector<Vst2Facts> contents = {{"Shell Mono", 0x5A536831, 1, 1, {"Level"}},
                                             {"Shell Stereo", 0x5A536832, 2, 2, {"Left", "Right"}},
                                             {"Shell Tone", 0x5A536833, 0, 2, {"Pitch"}, vst2::kCategorySynth}};
    return EnterShell(host, "Zel Shell", 0x5A536830, contents,
                      [host](const Vst2Facts& facts) { return new Vst2Plugin(host, facts); });
}
