#include "FaultHost.h"

#include <cstdlib>
#include <filesystem>
#include <iostream>

#include <zelaudiofilterhost/BannedPluginManager.h>
#include <zelaudiofilterhost/PluginModuleInfoManager.h>
#include <zelaudiofilterhostui/AudioPluginManager.h>
#include <zelaudiofilterhostui/AudioPluginScan.h>
#include <zelcore/Dir.h>
#include <zelcore/MainLoop.h>
#include <zelcore/Utf.h>
#include <zelui/Application.h>
#include <zelui/UI_ProgressDialog.h>

#include "FaultPoints.h"

namespace zelfaults {

using namespace zelaudiofilterhost;
using zelaudiofilterhostui::AudioPluginManager;
using zelaudiofilterhostui::AudioPluginScan;
using zelcore::filesupport::Dir;
using zelcore::filesupport::File;
using zelcore::threads::MainLoop;
using zelcore::utility::UTF16to8;
using zelcore::utility::UTF8to16;

namespace {

constexpr int kOthers = 40;
/// How long a user looks at a scan in which nothing moves; several times what a scanner may take to come.
constexpr std::chrono::milliseconds kPatience(6000);

PluginModuleInfoManager& Catalogue() { return PluginModuleInfoManager::GetInstance(); }
BannedPluginManager& Bans() { return BannedPluginManager::GetInstance(); }

File Preference(const zelcore::ustring& name) { return File(Dir::PrefDir(), name); }

void AddOthers() {
    PluginComponentInfo component;
    component.componentId = UTF8to16("VST-00000001");
    component.name = UTF8to16("Other");
    for (int i = 0; i < kOthers; ++i) {
        const boost::intrusive_ptr<PluginModuleInfo> info(new PluginModuleInfo(
            PluginLocator(kTechnologyVST, UTF8to16("/elsewhere/other" + std::to_string(i) + ".so")), zelcore::ustring(),
            {}, {component}));
        Catalogue().AddPluginInfo(info);
        info->SetEnabled(i % 3 != 0);
    }
    Catalogue().AddFailure({PluginLocator(kTechnologyVST, UTF8to16("/elsewhere/broken.so")), {}, UTF8to16("broken")});
}

std::string NameOf(const PluginLocator& locator) {
    return std::filesystem::path(UTF16to8(locator.GetPath()).c_str()).filename().string();
}

void TellEntries() {
    for (auto it = Catalogue().PluginInfoBegin(); it != Catalogue().PluginInfoEnd(); ++it)
        std::cout << "entry " << (*it)->IsEnabled() << ' ' << UTF16to8((*it)->GetLocator().GetPath()) << '\n';
    for (auto it = Catalogue().FailureBegin(); it != Catalogue().FailureEnd(); ++it)
        std::cout << "failed " << UTF16to8(it->locator.GetPath()) << '\n';
    for (auto it = Bans().BannedBegin(); it != Bans().BannedEnd(); ++it)
        std::cout << "ban " << UTF16to8(it->GetPath()) << '|' << UTF16to8(Bans().GetReason(*it)) << '\n';
    const PluginLocator permanent(kTechnologyVST, UTF8to16("/anywhere/mda Combo.dll"));
    std::cout << "permanent " << Bans().IsBanned(permanent) << std::endl;
}

}  // namespace

FaultHost::FaultHost(const std::string& profile)
    : mProfile(profile), mFaults(profile, FaultPlan::Read(FaultPlan::kHostVariable)) {
    Dir::SetPrefDir(Dir(UTF8to16(profile)));
    if (const char* const folder = std::getenv("ZEL_FAULT_SCANNER_FOLDER")) Dir::SetAppDir(Dir(UTF8to16(folder)));
}

FaultHost::~FaultHost() { SetPatience(std::chrono::milliseconds(0)); }

void FaultHost::Prepare(const std::vector<std::string>& folders) {
    Start();
    AddOthers();
    Bans().AddBannedPlugin(PluginLocator(kTechnologyVST, UTF8to16("/elsewhere/bad.so")), UTF8to16("crashed long ago"));
    Bans().AddBannedPlugin(PluginLocator(kTechnologyVST3, UTF8to16("/elsewhere/unwanted.vst3")));
    Bans().SaveConfiguration(Preference(Bans().GetSettingsFileName()));
    std::vector<PluginLocator> known;
    for (const std::string& folder : folders) {
        for (const PluginLocator& locator : Catalogue().CollectPotentialPluginsIn({UTF8to16(folder)}, false))
            if (NameOf(locator).find("known") != std::string::npos) known.push_back(locator);
    }
    AudioPluginScan(nullptr).ScanForPlugins(nullptr, known, false);
    for (const PluginLocator& locator : known)
        Catalogue().FindPluginInfo(locator)->SetEnabled(NameOf(locator).find("off") == std::string::npos);
    Catalogue().SaveConfiguration(Preference(Catalogue().GetSettingsFileName()), true);
}

void FaultHost::Start() {
    // Nobody is there to close the box that tells of a crash.
    SetPatience(std::chrono::milliseconds(1));
    AudioPluginManager::GetInstance().CheckForCrashedPluginsAndNotifyUser(nullptr, nullptr);
    SetPatience(std::chrono::milliseconds(0));
}

void FaultHost::PaintOnce() {
    const boost::intrusive_ptr<zelui::dialogs::UI_ProgressDialog> dialog(
        new zelui::dialogs::UI_ProgressDialog(nullptr, zelcore::ustring(), zelcore::ustring(), nullptr, false, true));
    dialog->UI_ShowModeless();
    dialog->SetProgress(1, 2, zelcore::ustring());
    dialog->UI_IdleUpdate();
    dialog->UI_Close(zelui::ui::UI_DialogViewContainer::kResponseOK);
}

void FaultHost::Scan(const std::string& folder, bool everything, bool separate) {
    Start();
    const std::vector<PluginLocator> locators = Catalogue().CollectPotentialPluginsIn({UTF8to16(folder)}, !everything);
    PaintOnce();
    mConnection = zelui::dialogs::UI_ProgressDialog::GetProgressSignal().connect(
        [this](unsigned long, unsigned long, const zelcore::ustring& text) { OnProgress(text); });
    SetPatience(kPatience);
    std::cout << "begin" << std::endl;
    mFaults.Begin();
    AudioPluginScan(nullptr).ScanForPlugins(nullptr, locators, separate);
    std::cout << "allocations " << FaultPoints::GetAllocations() << std::endl;
    SetPatience(std::chrono::milliseconds(0));
}

void FaultHost::Look(const std::string& folder) {
    std::cout << "state files\n";
    std::cout << "permanent-loaded "
              << Bans().LoadStaticConfiguration(Preference(Bans().GetPermanentBannedSettingsFileName())) << '\n'
              << "bans-loaded " << Bans().LoadConfiguration(Preference(Bans().GetSettingsFileName())) << '\n'
              << "catalogue-loaded "
              << (Catalogue().LoadConfiguration(Preference(Catalogue().GetSettingsFileName())) ==
                  PluginModuleInfoManager::kLoaded)
              << '\n';
    TellEntries();
    Start();
    std::cout << "state started\n";
    TellEntries();
    AudioPluginScan(nullptr).ScanForPlugins(nullptr, Catalogue().CollectPotentialPluginsIn({UTF8to16(folder)}, true),
                                            true);
    std::cout << "state scanned\n";
    TellEntries();
    std::cout << "end" << std::endl;
}

void FaultHost::OnProgress(const zelcore::ustring& text) {
    mLastProgress = std::chrono::steady_clock::now();
    std::cout << "progress " << UTF16to8(text) << std::endl;
    mFaults.Reach(++mReached);
}

void FaultHost::SetPatience(std::chrono::milliseconds patience) {
    mPatience = patience;
    mLastProgress = std::chrono::steady_clock::now();
    MainLoop& loop = *MainLoop::GetInstalled();
    if (patience.count() == 0) {
        loop.StopTimer(mTimer);
        mTimer = 0;
    } else if (mTimer == 0) {
        mTimer = loop.StartTimer(1, [this] { OnTimer(); });
    }
}

void FaultHost::OnTimer() {
    if (std::chrono::steady_clock::now() - mLastProgress < mPatience) return;
    if (zelui::Application::CancelActiveDialog() && mPatience == kPatience) std::cout << "cancelled" << std::endl;
}

}  // namespace zelfaults
