#pragma once

#include <set>
#include <string>

namespace zeltests {

/// Full paths of the plug-ins that the system's packages have put into the usual folders, links resolved; found without
/// the code under test.
std::set<std::string> FindInstalledPlugins();

}  // namespace zeltests
