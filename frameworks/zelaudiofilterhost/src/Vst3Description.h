#pragma once

#include <string>

#include <zelaudiofilterhost/PluginDescription.h>

namespace zelaudiofilterhost {

/// DescribePlugin for the VST3 file or bundle at the full path `path`; `subcomponent` names one class of it or is empty
/// for all. Components may come without a name.
PluginDescription DescribeVst3(const std::string& path, const zelcore::ustring& subcomponent);

}  // namespace zelaudiofilterhost
