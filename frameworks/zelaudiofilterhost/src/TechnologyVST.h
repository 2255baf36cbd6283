#pragma once

#include <zelaudiofilterhost/PluginTechnology.h>

namespace zelaudiofilterhost {

/// VST 2: shared libraries, but not those inside the bundles of other formats.
class TechnologyVST : public PluginTechnology {
public:
    TechnologyType GetType() const override;
    ustring GetName() const override;
    std::vector<ustring> GetDefaultDirectories() const override;
    std::vector<PluginLocator> FindPlugins(const ustring& directory) const override;
};

}  // namespace zelaudiofilterhost
