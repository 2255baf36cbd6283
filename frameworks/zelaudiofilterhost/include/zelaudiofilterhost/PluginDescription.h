#pragma once

#include <stdexcept>
#include <string>
#include <vector>

#include <zelaudiofilterhost/PluginComponentInfo.h>
#include <zelaudiofilterhost/PluginLocator.h>

namespace zelaudiofilterhost {

/// What a plug-in module says of itself when it is loaded.
struct PluginDescription {
    ustring name;  ///< of the module as a whole; empty when it has none of its own
    /// At least one, in the module's order.
    std::vector<PluginComponentInfo> components;
};

/// Why a file is no plug-in that works, in plain words.
class ZELAUDIOFILTERHOST_API PluginLoadError : public std::runtime_error {
public:
    /// `reason` is UTF-8, in plain words, to be read behind the plug-in's name.
    explicit PluginLoadError(const std::string& reason);
    ~PluginLoadError() override;
};

/// Loads the module that `locator` names, makes one instance of each of its components, asks them what they are and
/// unloads it all. Trusts nothing that it is told; what the plug-in's own code does to the process is beyond it. Throws
/// PluginLoadError. Main thread (plug-ins expect it).
ZELAUDIOFILTERHOST_API PluginDescription DescribePlugin(const PluginLocator& locator);

}  // namespace zelaudiofilterhost
