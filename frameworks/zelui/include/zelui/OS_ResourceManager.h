#pragma once

#include <optional>
#include <string>

#include <zelcore/PlatformHandles.h>

#include <zelui/Export.h>

namespace zelui {
namespace utility {

/// Reads the resources that a module (a library or a program) carries: texts such as layout archives, by type and name.
/// On Windows they are the module's resources; elsewhere exported data symbols, `zel_resource_<type>_<name>` for the
/// bytes and the same with `_size` behind it, an unsigned long, for their number. Any thread.
class ZELUI_API OS_ResourceManager {
public:
    /// `module` must stay loaded for as long as the object is used; null has no resources.
    explicit OS_ResourceManager(HINSTANCE module);
    virtual ~OS_ResourceManager();
    OS_ResourceManager(const OS_ResourceManager&) = delete;
    OS_ResourceManager& operator=(const OS_ResourceManager&) = delete;

    /// The bytes of a resource; none when the module does not have it, or when type or name hold anything but letters,
    /// digits and underscores. A resource of more than 16 MiB counts as none.
    virtual std::optional<std::string> ReadResource(const std::string& type, const std::string& name) const;

private:
    const HINSTANCE mModule;
};

}  // namespace utility
}  // namespace zelui
