#pragma once

#include <set>
#include <string>
#include <vector>

namespace zeltests {

/// Full paths of the plug-ins that the system's packages have put into the usual folders, links resolved; found without
/// the code under test.
std::set<std::string> FindInstalledPlugins();

/// Whether a package of the system has a plug-in there.
bool IsInstalled(const std::string& path);

/// The variables ("NAME=value") that give a program some plug-ins to show, out of the folder of the test plug-ins: none
/// where packages bring real ones.
std::vector<std::string> GetPluginVariables(const std::string& testPlugins);

}  // namespace zeltests
