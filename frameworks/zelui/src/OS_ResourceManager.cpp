#include <zelui/OS_ResourceManager.h>

#include <algorithm>

#include "ModuleResource.h"

namespace zelui {
namespace utility {

namespace {

constexpr std::size_t kLargest = 16u << 20;

bool IsName(const std::string& text) {
    return !text.empty() && std::all_of(text.begin(), text.end(), [](char c) {
        return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9') || c == '_';
    });
}

}  // namespace

OS_ResourceManager::OS_ResourceManager(HINSTANCE module) : mModule(module) {}

OS_ResourceManager::~OS_ResourceManager() = default;

std::optional<std::string> OS_ResourceManager::ReadResource(const std::string& type, const std::string& name) const {
    if (mModule == nullptr || !IsName(type) || !IsName(name)) return std::nullopt;
    const std::optional<std::string_view> found = FindModuleResource(mModule, type, name);
    if (!found || found->size() > kLargest) return std::nullopt;
    return std::string(*found);
}

}  // namespace utility
}  // namespace zelui
