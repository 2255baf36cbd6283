#include "Vst3Entry.h"

namespace zelaudiofilterhost {

namespace {

typedef bool (*InitDll)();
typedef bool (*ExitDll)();

}  // namespace

Vst3Entry FindVst3Entry(const SharedLibrary& library) {
    // Here the system itself calls a module when it comes and goes, so that many have no need of these.
    Vst3Entry entry;
    if (const auto start = reinterpret_cast<InitDll>(library.FindFunction("InitDll")))
        entry.start = [start] { return start(); };
    if (const auto end = reinterpret_cast<ExitDll>(library.FindFunction("ExitDll")))
        entry.end = [end] { return end(); };
    return entry;
}

}  // namespace zelaudiofilterhost
