#include "LocatorHash.h"

#include <functional>
#include <string_view>

namespace zelaudiofilterhost {

namespace {

std::size_t HashText(const ustring& text) noexcept {
    const char* bytes = reinterpret_cast<const char*>(text.data());
    return std::hash<std::string_view>()(std::string_view(bytes, text.size() * sizeof(ustring::value_type)));
}

}  // namespace

std::size_t LocatorHash::operator()(const PluginLocator& locator) const noexcept {
    // Paths share long beginnings and few plug-ins have a subcomponent, so the path's hash carries nearly all of it.
    constexpr std::size_t kSpread = 31;
    const std::size_t technology = static_cast<std::size_t>(locator.GetTechnologyType());
    return (HashText(locator.GetPath()) * kSpread + HashText(locator.GetSubcomponent())) * kSpread + technology;
}

}  // namespace zelaudiofilterhost
