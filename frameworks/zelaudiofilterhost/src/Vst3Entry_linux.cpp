#include "Vst3Entry.h"

namespace zelaudiofilterhost {

namespace {

typedef bool (*ModuleEntry)(void* libraryHandle);
typedef bool (*ModuleExit)();

}  // namespace

Vst3Entry FindVst3Entry(const SharedLibrary& library) {
    const auto start = RequireVst3Function<ModuleEntry>(library, "ModuleEntry");
    const auto end = RequireVst3Function<ModuleExit>(library, "ModuleExit");
    return {[start, handle = library.GetHandle()] { return start(handle); },
            // Bare, its type would be known outside of the library.
            [end] { return end(); }};
}

}  // namespace zelaudiofilterhost
