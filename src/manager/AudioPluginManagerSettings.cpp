#include <zelaudiofilterhostui/AudioPluginManagerSettings.h>

namespace zelaudiofilterhostui {

AudioPluginManagerSettings::AudioPluginManagerSettings() : rescanExisting(false), sortColumn(0), sortAscending(false) {}

AudioPluginManagerSettings::AudioPluginManagerSettings(const AudioPluginManagerSettings&) = default;

AudioPluginManagerSettings& AudioPluginManagerSettings::operator=(const AudioPluginManagerSettings&) = default;

}  // namespace zelaudiofilterhostui
