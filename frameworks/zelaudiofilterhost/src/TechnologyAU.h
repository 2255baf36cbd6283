#pragma once

#include <zelaudiofilterhost/PluginTechnology.h>

namespace zelaudiofilterhost {

/// Audio Units, which live on macOS alone; elsewhere the format is known by name and nothing of it is found.
class TechnologyAU : public PluginTechnology {
public:
    TechnologyType GetType() const override;
    ustring GetName() const override;
    std::vector<ustring> GetDefaultDirectories() const override;
    std::vector<PluginLocator> FindPlugins(const ustring& directory) const override;
};

}  // namespace zelaudiofilterhost
