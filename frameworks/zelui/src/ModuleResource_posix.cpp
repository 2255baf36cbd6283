#include "ModuleResource.h"

#include <dlfcn.h>

namespace zelui {

std::optional<std::string_view> FindModuleResource(HINSTANCE module, const std::string& type, const std::string& name) {
    const std::string symbol = "zel_resource_" + type + "_" + name;
    const void* const bytes = dlsym(module, symbol.c_str());
    const void* const size = dlsym(module, (symbol + "_size").c_str());
    if (bytes == nullptr || size == nullptr) return std::nullopt;
    return std::string_view(static_cast<const char*>(bytes), *static_cast<const unsigned long*>(size));
}

}  // namespace zelui
