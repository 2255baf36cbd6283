#include <zelaudiofilterhostui/AudioPluginManager.h>

#include <string>

#include <zelaudiofilterhost/BannedPluginManager.h>
#include <zelaudiofilterhost/PluginModuleInfoManager.h>
#include <zelaudiofilterhostui/AudioPluginScan.h>
#include <zelcore/FileUtils.h>
#include <zelcore/IPlatformByteStream.h>
#include <zelcore/Localizer.h>
#include <zelcore/StringUtils.h>
#include <zelcore/Utf.h>
#include <zelui/MessageBox.h>
#include <zelui/OS_ResourceManager.h>

#include "manager/PluginManagerDialog.h"
#include "scan/PreferenceFiles.h"
#include "views/ModuleState.h"

namespace zelaudiofilterhostui {

using zelaudiofilterhost::BannedPluginManager;
using zelaudiofilterhost::PluginModuleInfoManager;
using zelcore::filesupport::Dir;
using zelcore::filesupport::File;
using zelcore::filesupport::IPlatformByteStream;
using zelcore::utility::AsciiToUTF16;

namespace {

/// The list of plug-ins that are known not to work, as the library ships it.
void WriteShippedBanList(const File& file) {
    const zelui::utility::OS_ResourceManager* const resources = GetModuleResourceManager();
    if (resources == nullptr) return;
    const std::optional<std::string> list = resources->ReadResource("xml", "UnsupportedAudioPlugIns");
    if (list) zelcore::utility::FileUtils::SimpleWriteStringToFile(file.FullPath(), *list);
}

/// The plug-in that a marker names; the empty locator when it names none.
PluginLocator ReadMarker(const File& marker) {
    // A locator is at most so long, a code unit takes at most three bytes. What is longer was not written by a scan.
    constexpr std::uint64_t kMaxLength = 3 * PluginLocator::kMaxTextLength;
    IPlatformByteStream stream(marker, IPlatformByteStream::kRead);
    const std::uint64_t length = stream.Length();
    if (length == 0 || length > kMaxLength) return PluginLocator();
    std::string bytes(static_cast<std::size_t>(length), '\0');
    bytes.resize(stream.ReadBlock(bytes.data(), bytes.size()));
    return PluginLocator::FromString(zelcore::utility::UTF8to16(bytes));
}

void TellAboutCrash(const zelui::drawbot::SupplierInterface* supplier, const PluginLocator& locator, HWND parent) {
    ustring message = zelcore::config::Localize(
        "$$$/AudioPluginManager/PluginScanError=An error occurred when scanning the plug-in '@PLUGINNAME' that caused "
        "Tessaly to shut down. This plug-in has been disabled and will be omitted from future scans until it is "
        "manually enabled in Tessaly's Audio Plug-In Manager dialog.");
    zelcore::utility::ReplaceInString(message, AsciiToUTF16("@PLUGINNAME"),
                                      PluginModuleInfoManager::GetInstance().GetDisplayStringForLocator(locator));
    zelui::dialogs::messagebox::ShowCaution(supplier, zelcore::config::GetClientName(), message, parent);
}

void LoadBanLists() {
    BannedPluginManager& bans = BannedPluginManager::GetInstance();
    const File permanent = GetPermanentBanListFile();
    if (!bans.LoadStaticConfiguration(permanent)) {
        WriteShippedBanList(permanent);
        bans.LoadStaticConfiguration(permanent);
    }
    bans.LoadConfiguration(GetBanListFile());
}

}  // namespace

AudioPluginManager::~AudioPluginManager() = default;

AudioPluginManager& AudioPluginManager::GetInstance() {
    static AudioPluginManager sInstance;
    return sInstance;
}

void AudioPluginManager::CheckForCrashedPluginsAndNotifyUser(const zelui::drawbot::SupplierInterface* supplier,
                                                             HWND parent) {
    // What a run that was killed while it saved left behind.
    zelcore::utility::FileUtils::RemoveLeftovers(Dir::PrefDir());
    LoadBanLists();
    const File marker = AudioPluginScan::GetLastScannedPluginPath();
    if (marker.Exists()) {
        const PluginLocator locator = ReadMarker(marker);
        if (!locator.GetPath().empty()) {
            BannedPluginManager& bans = BannedPluginManager::GetInstance();
            bans.AddBannedPlugin(locator);
            bans.SaveConfiguration(GetBanListFile());
            TellAboutCrash(supplier, locator, parent);
        }
        marker.Delete();
    }
    // After the ban, which it is to know of.
    PluginModuleInfoManager::GetInstance().LoadConfiguration(GetCatalogueFile());
}

void AudioPluginManager::DoPluginManagerDialog(const zelui::drawbot::SupplierInterface* supplier,
                                               AudioPluginManagerSettings& settings, HWND parent) {
    PluginModuleInfoManager& catalogue = PluginModuleInfoManager::GetInstance();
    const File file = GetCatalogueFile();
    // There has to be something that Cancel can go back to.
    if (!file.Exists()) {
        catalogue.ResetToDefaultFolders();
        catalogue.SaveConfiguration(file, true);
    }
    // Its end stores what it remembers, on every way out.
    const boost::intrusive_ptr<zelui::ui::UI_ArchivedDialog> dialog =
        MakePluginManagerDialog(supplier, GetModuleResourceManager(), settings, parent);
    if (settings.dialogRect.width >= 1 && settings.dialogRect.height >= 1)
        dialog->SetGlobalStructureRect(settings.dialogRect);
    const zelui::ui::UI_Dialog::Response response = dialog->RunModal();
    settings.dialogRect = dialog->GetGlobalStructureRect();
    if (response != zelui::ui::UI_DialogViewContainer::kResponseOK) {
        catalogue.LoadConfiguration(file);
        return;
    }
    catalogue.SaveConfiguration(file, true);
    catalogue.GetPluginInfosChangedSignal()();
}

}  // namespace zelaudiofilterhostui
