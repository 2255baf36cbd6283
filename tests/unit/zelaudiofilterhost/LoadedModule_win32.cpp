#include "LoadedModule.h"

#include <windows.h>

#include <filesystem>

namespace zeltests {

bool IsLoaded(const std::string& path) {
    return GetModuleHandleW(std::filesystem::path(path).make_preferred().c_str()) != nullptr;
}

}  // namespace zeltests
