#pragma once

#include <boost/intrusive_ptr.hpp>
#include <zelaudiofilterhostui/AudioPluginManagerSettings.h>
#include <zelui/UI_ArchivedDialog.h>

namespace zelaudiofilterhostui {

/// Makes the plug-in manager dialog: every plug-in with its check box, the plug-in folders, and the scan. Each thing
/// that the user does in it is done to the live catalogue at once; whoever runs the dialog decides afterwards whether
/// it is kept. The check box and the sort order come from `settings` and are stored there when the dialog goes.
///
/// `supplier` (null takes the screen's), `resources` and `settings` outlive the dialog; `parent` is the window that it
/// belongs to, or null. Throws zelui::ui::ArchiveError.
boost::intrusive_ptr<zelui::ui::UI_ArchivedDialog> MakePluginManagerDialog(
    const zelui::drawbot::SupplierInterface* supplier, const zelui::utility::OS_ResourceManager* resources,
    AudioPluginManagerSettings& settings, HWND parent);

}  // namespace zelaudiofilterhostui
