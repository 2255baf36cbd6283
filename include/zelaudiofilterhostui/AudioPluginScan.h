#pragma once

#include <vector>

#include <boost/intrusive_ptr.hpp>
#include <zelaudiofilterhost/PluginLocator.h>
#include <zelcore/File.h>
#include <zelcore/PlatformHandles.h>
#include <zelcore/ustring.h>
#include <zelui/UI_DialogViewContainer.h>

#include <zelaudiofilterhostui/Export.h>
#include <zelaudiofilterhostui/ExternalAudioPluginScan.h>

namespace zelui {
namespace dialogs {
class UI_ProgressDialog;
}
namespace drawbot {
class SupplierInterface;
}
}  // namespace zelui

namespace zelaudiofilterhostui {

using zelaudiofilterhost::PluginLocator;
using zelcore::ustring;

/// One scan that the user asked for. Shows a progress dialog with a Cancel button,
/// loads the plug-ins in this process or in the scanner process, and leaves a saved catalogue whose listeners know of
/// the change. Main thread only.
///
/// Exceptions of the file library and the filter host pass to the caller: a catalogue that cannot be written, for
/// instance. What was scanned is then still in memory.
class ZELAUDIOFILTERHOSTUI_API AudioPluginScan {
public:
    /// `supplier` draws the dialogs; it is not owned and must outlive the object. Null takes the screen's.
    explicit AudioPluginScan(const zelui::drawbot::SupplierInterface* supplier);
    ~AudioPluginScan();
    AudioPluginScan(const AudioPluginScan&) = delete;
    AudioPluginScan& operator=(const AudioPluginScan&) = delete;

    /// Scans exactly `locators` and returns when the scan has ended or was cancelled. They leave the catalogue first:
    /// what is not found working does not come back. `parentWindow` owns the progress dialog (may be null).
    /// `separateProcess` loads them in the scanner process, where a plug-in that crashes or hangs is banned and the
    /// rest goes on; without it they are loaded here, and a crash leaves the marker file.
    void ScanForPlugins(HWND parentWindow, const std::vector<PluginLocator>& locators, bool separateProcess);

    /// Looks for plug-ins in the catalogue's folders, drops those that are gone, and scans what is new or has changed;
    /// with `rescanExisting` everything.
    void ScanForPlugins(HWND parentWindow, bool rescanExisting, bool separateProcess);

    /// The marker file, which names the plug-in that an in-process scan is loading. It is there after a run that died
    /// in a scan. Says nothing about whether it exists.
    static zelcore::filesupport::File GetLastScannedPluginPath();
    /// The scanner's program: beside the application where it is there, otherwise where it is installed with the
    /// library. When it does not exist, a scan with `separateProcess` finds nothing; a host may tell before.
    static zelcore::filesupport::File GetScannerExecutable();

private:
    typedef boost::intrusive_ptr<zelui::dialogs::UI_ProgressDialog> ProgressDialogPtr;

    void ScanInProcess(const std::vector<PluginLocator>& locators, const ProgressDialogPtr& dialog);
    void ScanInSeparateProcess(const std::vector<PluginLocator>& locators, const ProgressDialogPtr& dialog);
    bool ScanProgressCallback(const PluginLocator& locator, const ustring& progressText, int current, int total,
                              ProgressDialogPtr dialog);
    void ExternalScanProgressCallback(const PluginLocator& locator, const ustring& progressText, int current, int total,
                                      ProgressDialogPtr dialog);
    bool OnProgressPostClose(zelui::ui::UI_DialogViewContainer::Response response);

    const zelui::drawbot::SupplierInterface* mSupplier;
    ExternalAudioPluginScan mExternalScan;
    bool mCancelled;
};

}  // namespace zelaudiofilterhostui
