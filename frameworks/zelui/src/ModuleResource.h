#pragma once

#include <optional>
#include <string>
#include <string_view>

#include <zelcore/PlatformHandles.h>

namespace zelui {

/// The bytes of a resource where the module holds them; none when it has no such resource. `type` and `name` hold
/// letters, digits and underscores only.
std::optional<std::string_view> FindModuleResource(HINSTANCE module, const std::string& type, const std::string& name);

}  // namespace zelui
