#pragma once

#include <zelaudiofilterhost/PluginTechnology.h>

namespace zelaudiofilterhost {

/// VST 3: bundles (folders) and single files named .vst3. A folder of that name is a candidate whatever is in it, so
/// that a broken bundle is reported with its reason instead of being missing.
class TechnologyVST3 : public PluginTechnology {
public:
    TechnologyType GetType() const override;
    ustring GetName() const override;
    std::vector<ustring> GetDefaultDirectories() const override;
    std::vector<PluginLocator> FindPlugins(const ustring& directory) const override;
};

}  // namespace zelaudiofilterhost
