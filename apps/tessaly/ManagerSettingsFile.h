#pragma once

#include <zelaudiofilterhostui/AudioPluginManagerSettings.h>

namespace tessaly {

/// Where the plug-in manager's choices are kept between runs: a file in the preferences folder. Main thread.
class ManagerSettingsFile {
public:
    /// What is missing or makes no sense is as in a new record.
    static zelaudiofilterhostui::AudioPluginManagerSettings Load();
    /// False when it cannot be written.
    static bool Save(const zelaudiofilterhostui::AudioPluginManagerSettings& settings);
};

}  // namespace tessaly
