#include "StartUpCheck.h"

#include <algorithm>
#include <iostream>
#include <vector>

#include <zelaudiofilterhost/BannedPluginManager.h>
#include <zelaudiofilterhostui/AudioPluginManager.h>
#include <zelcore/FileError.h>
#include <zelcore/MainLoop.h>
#include <zelcore/Utf.h>
#include <zelui/Application.h>
#include <zelui/SupplierInterface.h>

#include "Preferences.h"
#include "TerminalText.h"

namespace tessaly {

using zelaudiofilterhost::BannedPluginManager;
using zelaudiofilterhost::PluginLocator;
using zelaudiofilterhostui::AudioPluginManager;
using zelcore::filesupport::Dir;
using zelcore::filesupport::File;
using zelcore::threads::MainLoop;

namespace {

/// Dismisses, while it lives, what asks for an answer that nobody can give.
class BoxDismisser {
public:
    BoxDismisser()
        : mTimer(MainLoop::GetInstalled()->StartTimer(1, [] { zelui::Application::CancelActiveDialog(); })) {}
    ~BoxDismisser() { MainLoop::GetInstalled()->StopTimer(mTimer); }
    BoxDismisser(const BoxDismisser&) = delete;
    BoxDismisser& operator=(const BoxDismisser&) = delete;

private:
    const unsigned long mTimer;
};

void Check() {
    AudioPluginManager::GetInstance().CheckForCrashedPluginsAndNotifyUser(
        zelui::drawbot::SupplierInterface::GetDefault(), nullptr);
}

void TellOfNewBans(const std::vector<PluginLocator>& before) {
    BannedPluginManager& bans = BannedPluginManager::GetInstance();
    for (auto banned = bans.BannedBegin(); banned != bans.BannedEnd(); ++banned) {
        if (std::find(before.begin(), before.end(), *banned) != before.end()) continue;
        std::cerr << "tessaly: the last scan ended while it loaded "
                  << TerminalText::MakePrintable(TerminalText::FromText(banned->GetPath()))
                  << ", which is banned from now on\n";
    }
}

}  // namespace

void StartUpCheck::Run() {
    try {
        if (zelui::Application::HasDisplay())
            Check();
        else
            CheckWithoutDisplay();
    } catch (const zelcore::filesupport::FileError& error) {
        std::cerr << "tessaly: " << error.what() << '\n';
        Preferences::Load();
    }
}

void StartUpCheck::CheckWithoutDisplay() {
    BannedPluginManager& bans = BannedPluginManager::GetInstance();
    bans.LoadConfiguration(File(Dir::PrefDir(), bans.GetSettingsFileName()));
    // In this order: the end is that of the list as it was at the beginning.
    const auto begin = bans.BannedBegin();
    const std::vector<PluginLocator> before(begin, bans.BannedEnd());
    const BoxDismisser dismisser;
    try {
        Check();
    } catch (...) {
        TellOfNewBans(before);
        throw;
    }
    TellOfNewBans(before);
}

}  // namespace tessaly
