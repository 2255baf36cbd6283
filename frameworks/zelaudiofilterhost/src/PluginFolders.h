#pragma once

#include <vector>

#include <zelaudiofilterhost/PluginLocator.h>

namespace zelaudiofilterhost {

/// The folders in which this platform keeps plug-ins of a technology: those of environment variables first, then the
/// user's, then the system's. Full paths, whether they are there or not; two names of the same folder are listed once.
std::vector<ustring> DefaultPluginFolders(TechnologyType technology);

/// How the names of VST modules end on this platform, with the dot.
ustring VstModuleExtension();

/// Whether a path starts at a root of this platform.
bool IsFullPath(const ustring& path);

/// Whether two names, or paths, are the same to this platform's file systems.
bool IsSameName(const ustring& left, const ustring& right);

}  // namespace zelaudiofilterhost
