#include <dlfcn.h>

#include "views/ModuleState.h"

namespace zelaudiofilterhostui {

namespace {

// What the loader knows this library by. Asking for a library that is loaded already gives its handle; a program that
// was linked with these objects directly is its own module.
HINSTANCE FindOwnHandle() {
    Dl_info info = {};
    if (dladdr(reinterpret_cast<const void*>(&FindOwnHandle), &info) == 0 || info.dli_fname == nullptr) return nullptr;
    void* handle = dlopen(info.dli_fname, RTLD_LAZY | RTLD_NOLOAD);
    if (handle == nullptr) handle = dlopen(nullptr, RTLD_LAZY);
    // The handle stays good for as long as the library is loaded, which is as long as this code can run: holding it
    // would keep the library from ever being unloaded.
    if (handle != nullptr) dlclose(handle);
    return static_cast<HINSTANCE>(handle);
}

[[gnu::constructor]] void OnAttach() { SetModuleInstance(FindOwnHandle()); }

[[gnu::destructor]] void OnDetach() { SetModuleInstance(nullptr); }

}  // namespace

}  // namespace zelaudiofilterhostui
