#include "ModuleResource.h"

#include <windows.h>

namespace zelui {

std::optional<std::string_view> FindModuleResource(HINSTANCE module, const std::string& type, const std::string& name) {
    const HRSRC resource = FindResourceA(module, name.c_str(), type.c_str());
    if (resource == nullptr) return std::nullopt;
    const HGLOBAL loaded = LoadResource(module, resource);
    const void* const bytes = loaded == nullptr ? nullptr : LockResource(loaded);
    if (bytes == nullptr) return std::nullopt;
    return std::string_view(static_cast<const char*>(bytes), SizeofResource(module, resource));
}

}  // namespace zelui
