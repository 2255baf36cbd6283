#pragma once

#include <zelcore/PlatformHandles.h>
#include <zelui/SupplierInterface.h>

#include <zelaudiofilterhostui/AudioPluginManagerSettings.h>
#include <zelaudiofilterhostui/Export.h>

namespace zelaudiofilterhostui {

/// What a host calls for the plug-ins as a whole: at start-up the check for a plug-in that took the last run down, and
/// the dialog in which people manage their plug-ins. Has no state of its own: the catalogue and the ban lists are the
/// filter host's. Main thread only; after Initialize, which gives the resources that both need.
///
/// Exceptions of the file library pass to the host, for instance when a file cannot be written. What is in memory
/// stays.
class ZELAUDIOFILTERHOSTUI_API AudioPluginManager {
public:
    /// The one manager; made when it is first asked for.
    static AudioPluginManager& GetInstance();

    AudioPluginManager() = default;
    /// It has no state, so that a copy is as good.
    AudioPluginManager(const AudioPluginManager&) = default;
    /// Changes nothing: it has no state.
    AudioPluginManager& operator=(const AudioPluginManager&) = default;
    virtual ~AudioPluginManager();

    /// Loads the ban lists and the catalogue from the preferences folder. If the last run died while it loaded a
    /// plug-in in a scan, that plug-in is banned first, and the user is told in a box over `parent` (may be null). Call
    /// it once at start-up, before any scan. `supplier` draws the box; null takes the screen's.
    void CheckForCrashedPluginsAndNotifyUser(const zelui::drawbot::SupplierInterface* supplier, HWND parent);

    /// Runs the plug-in manager dialog over `parent` (may be null) and returns when it has closed. What the user does
    /// in it is done to the catalogue at once; OK saves the catalogue and fires its signal, Cancel takes back what its
    /// file does not say. `settings` is read at opening and written at closing, in both cases. An exception of the save
    /// leaves the user's changes in memory.
    void DoPluginManagerDialog(const zelui::drawbot::SupplierInterface* supplier, AudioPluginManagerSettings& settings,
                               HWND parent);
};

}  // namespace zelaudiofilterhostui
