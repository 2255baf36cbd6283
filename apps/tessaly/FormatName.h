#pragma once

#include <zelaudiofilterhost/PluginLocator.h>
#include <zelcore/ustring.h>

namespace tessaly {

/// What people call a plug-in format: "VST", "VST3"; empty for one that is not known. Main thread.
zelcore::ustring GetFormatName(zelaudiofilterhost::TechnologyType type);

}  // namespace tessaly
