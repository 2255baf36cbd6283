#pragma once

#include <string>

#include <zelaudiofilterhost/PluginDescription.h>

namespace zelaudiofilterhost {

/// DescribePlugin for a VST2 module at the full path `path`; `subcomponent` names one component of a shell or is empty
/// for all. Components may come without a name.
PluginDescription DescribeVst2(const std::string& path, const zelcore::ustring& subcomponent);

}  // namespace zelaudiofilterhost
