#include "StartUpCheck.h"

#include <iostream>

#include <zelaudiofilterhost/BannedPluginManager.h>
#include <zelaudiofilterhostui/AudioPluginManager.h>
#include <zelaudiofilterhostui/AudioPluginScan.h>
#include <zelcore/FileError.h>
#include <zelcore/MainLoop.h>
#include <zelcore/Utf.h>
#include <zelui/Application.h>
#include <zelui/SupplierInterface.h>

#include "Preferences.h"
#include "TerminalText.h"

namespace tessaly {

using zelaudiofilterhost::BannedPluginManager;
using zelaudiofilterhostui::AudioPluginManager;
using zelaudiofilterhostui::AudioPluginScan;
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
    const bool wasLeft = AudioPluginScan::GetLastScannedPluginPath().Exists();
    {
        const BoxDismisser dismisser;
        Check();
    }
    BannedPluginManager& bans = BannedPluginManager::GetInstance();
    if (!wasLeft || bans.BannedBegin() == bans.BannedEnd()) return;
    std::cerr << "tessaly: the last scan did not come to its end; banned are now: ";
    for (auto banned = bans.BannedBegin(); banned != bans.BannedEnd(); ++banned)
        std::cerr << (banned == bans.BannedBegin() ? "" : ", ")
                  << TerminalText::MakePrintable(TerminalText::FromText(banned->GetPath()));
    std::cerr << '\n';
}

}  // namespace tessaly
