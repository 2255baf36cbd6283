#include "LoadedModule.h"

#include <dlfcn.h>

namespace zeltests {

bool IsLoaded(const std::string& path) {
    void* const handle = dlopen(path.c_str(), RTLD_NOW | RTLD_NOLOAD);
    if (handle != nullptr) dlclose(handle);
    return handle != nullptr;
}

}  // namespace zeltests
