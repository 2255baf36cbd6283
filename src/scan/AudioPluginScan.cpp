#include <zelaudiofilterhostui/AudioPluginScan.h>

#include <exception>

#include <boost/bind/bind.hpp>
#include <zelaudiofilterhost/PluginModuleInfoManager.h>
#include <zelaudiofilterhost/PluginModuleScanner.h>
#include <zelcore/DebugDatabase.h>
#include <zelcore/FileError.h>
#include <zelcore/FileUtils.h>
#include <zelcore/IPlatformByteStream.h>
#include <zelcore/Localizer.h>
#include <zelcore/Utf.h>
#include <zelui/MessageBox.h>
#include <zelui/UI_ProgressDialog.h>

#include "scan/PreferenceFiles.h"
#include "scan/ScannerLocation.h"

namespace zelaudiofilterhostui {

using zelaudiofilterhost::PluginModuleInfoManager;
using zelaudiofilterhost::PluginModuleScanner;
using zelcore::filesupport::Dir;
using zelcore::filesupport::File;
using zelcore::utility::AsciiToUTF16;
using zelui::dialogs::UI_ProgressDialog;
using zelui::ui::UI_DialogViewContainer;

namespace {

const ustring kMarkerFileName = AsciiToUTF16("ScannedPluginPath.txt");

void SaveCatalogue() { PluginModuleInfoManager::GetInstance().SaveConfiguration(GetCatalogueFile(), true); }

void DeleteMarker() {
    const File marker = AudioPluginScan::GetLastScannedPluginPath();
    if (!marker.Exists()) return;
    try {
        marker.Delete();
    } catch (const zelcore::filesupport::FileError&) {
        // One that stays would have the next start ban a plug-in that did nothing. An empty one blames nobody, and a
        // folder that lets nothing be deleted may still let files be written.
        const zelcore::filesupport::IPlatformByteStream emptied(marker,
                                                                zelcore::filesupport::IPlatformByteStream::kWrite);
        throw;
    }
}

void ShowPosition(UI_ProgressDialog& dialog, const PluginLocator& locator, const ustring& text, int current,
                  int total) {
    dialog.SetExtraText(PluginModuleInfoManager::GetInstance().GetDisplayStringForLocator(locator) + text);
    dialog.SetProgress(static_cast<unsigned long>(current), static_cast<unsigned long>(total), ustring());
}

/// Stops a scan in the scanner process on every way out of the dialog's modal loop.
class ExternalScanStop {
public:
    explicit ExternalScanStop(ExternalAudioPluginScan& scan) : mScan(scan) {}
    ~ExternalScanStop() { mScan.Stop(); }
    ExternalScanStop(const ExternalScanStop&) = delete;
    ExternalScanStop& operator=(const ExternalScanStop&) = delete;

private:
    ExternalAudioPluginScan& mScan;
};

/// Sees an in-process scan to its end on every way out: a scan that an exception ends must not leave a marker that
/// blames a plug-in which never ran, nor a dialog without an owner.
class InProcessScan {
public:
    InProcessScan(const std::vector<PluginLocator>& locators, const boost::intrusive_ptr<UI_ProgressDialog>& dialog)
        : mScanner(new PluginModuleScanner(locators, false)),
          mDialog(dialog),
          mExceptions(std::uncaught_exceptions()) {}
    ~InProcessScan() {
        mScanner->EndScan();
        mDialog->UI_Close(UI_DialogViewContainer::kResponseOK);
        mDialog->SetPostCloseCallback(UI_ProgressDialog::PostCloseCallback());
        if (std::uncaught_exceptions() > mExceptions) DeleteMarkerQuietly();
    }
    InProcessScan(const InProcessScan&) = delete;
    InProcessScan& operator=(const InProcessScan&) = delete;

    PluginModuleScanner& GetScanner() { return *mScanner; }

private:
    static void DeleteMarkerQuietly() {
        try {
            DeleteMarker();
        } catch (const zelcore::filesupport::FileError&) {
            // The exception on its way tells the host of the folder's trouble already.
        }
    }

    boost::intrusive_ptr<PluginModuleScanner> mScanner;
    boost::intrusive_ptr<UI_ProgressDialog> mDialog;
    int mExceptions;
};

}  // namespace

AudioPluginScan::AudioPluginScan(const zelui::drawbot::SupplierInterface* supplier)
    : mSupplier(supplier), mCancelled(false) {}

AudioPluginScan::~AudioPluginScan() = default;

File AudioPluginScan::GetLastScannedPluginPath() { return File(Dir::PrefDir(), kMarkerFileName); }

File AudioPluginScan::GetScannerExecutable() { return ScannerLocation::Find(); }

void AudioPluginScan::ScanForPlugins(HWND parentWindow, bool rescanExisting, bool separateProcess) {
    PluginModuleInfoManager& catalogue = PluginModuleInfoManager::GetInstance();
    std::vector<PluginLocator> removed;
    const std::vector<PluginLocator> candidates = catalogue.CollectPotentialPlugins(!rescanExisting, removed);
    catalogue.RemovePluginLocators(removed);
    ScanForPlugins(parentWindow, candidates, separateProcess);
}

void AudioPluginScan::ScanForPlugins(HWND parentWindow, const std::vector<PluginLocator>& locators,
                                     bool separateProcess) {
    mCancelled = false;
    const ProgressDialogPtr dialog(new UI_ProgressDialog(
        mSupplier, zelcore::config::Localize("$$$/AudioPluginManager/ScanAudioPlugIns=Scanning Audio Plug-Ins"),
        ustring(), parentWindow, false, true));
    // What is about to be scanned leaves the catalogue first, so that only what the scan finds comes back.
    PluginModuleInfoManager::GetInstance().RemovePluginLocators(locators);
    if (separateProcess)
        ScanInSeparateProcess(locators, dialog);
    else
        ScanInProcess(locators, dialog);

    DeleteMarker();
    SaveCatalogue();
    PluginModuleInfoManager::GetInstance().GetPluginInfosChangedSignal()();
}

void AudioPluginScan::ScanInProcess(const std::vector<PluginLocator>& locators, const ProgressDialogPtr& dialog) {
    InProcessScan scan(locators, dialog);
    dialog->SetPostCloseCallback(boost::bind(&AudioPluginScan::OnProgressPostClose, this, boost::placeholders::_1));
    dialog->UI_ShowModeless();
    scan.GetScanner().BeginScan();
    for (;;) {
        PluginLocator locator;
        ustring text;
        int current = 0;
        int total = 0;
        if (!scan.GetScanner().GetCurrentProgressInfo(locator, text, current, total)) break;
        if (!ScanProgressCallback(locator, text, current, total, dialog)) break;
        if (!scan.GetScanner().ContinueScan()) break;
    }
}

bool AudioPluginScan::ScanProgressCallback(const PluginLocator& locator, const ustring& progressText, int current,
                                           int total, ProgressDialogPtr dialog) {
    // The marker comes before everything that could fail in the plug-in.
    zelcore::utility::FileUtils::SimpleWriteStringToFile(GetLastScannedPluginPath().FullPath(),
                                                         zelcore::utility::UTF16to8(locator.ToString()));
    if (dialog) {
        ShowPosition(*dialog, locator, progressText, current, total);
        dialog->UI_IdleUpdate();
    }
    if (zelcore::debug::DebugDatabase::Instance().GetEntry("DebugPluginLoading", "") == "true") {
        // A developer's aid, hence not in the user's language.
        zelui::dialogs::messagebox::ShowNote(mSupplier, AsciiToUTF16("Scanning"), locator.GetPath(),
                                             dialog ? dialog->UI_GetPlatformWindow() : nullptr);
    }
    // What was scanned so far is on disk if this plug-in brings the application down.
    SaveCatalogue();
    return !mCancelled;
}

bool AudioPluginScan::OnProgressPostClose(UI_DialogViewContainer::Response response) {
    mCancelled = response == UI_DialogViewContainer::kResponseCancel;
    return false;
}

void AudioPluginScan::ScanInSeparateProcess(const std::vector<PluginLocator>& locators,
                                            const ProgressDialogPtr& dialog) {
    // The scanner starts from the catalogue as it is now.
    SaveCatalogue();

    using namespace boost::placeholders;
    if (!mExternalScan.Scan(GetCatalogueFile().FullPath(), GetBanListFile().FullPath(),
                            GetPermanentBanListFile().FullPath(), locators,
                            boost::bind(&AudioPluginScan::ExternalScanProgressCallback, this, _1, _2, _3, _4, dialog)))
        return;
    const ExternalScanStop stop(mExternalScan);
    dialog->UI_RunModal();
}

void AudioPluginScan::ExternalScanProgressCallback(const PluginLocator& locator, const ustring& progressText,
                                                   int current, int total, ProgressDialogPtr dialog) {
    if (!dialog) return;
    if (current > total) {
        dialog->UI_Close(UI_DialogViewContainer::kResponseOK);
        return;
    }
    ShowPosition(*dialog, locator, progressText, current, total);
}

}  // namespace zelaudiofilterhostui
