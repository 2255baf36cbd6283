#include "ManageCommand.h"

#include <iostream>
#include <QApplication>
#include <QPixmap>
#include <QWidget>

#include <zelaudiofilterhost/PluginModuleInfoManager.h>
#include <zelaudiofilterhostui/AudioPluginManager.h>
#include <zelcore/FileError.h>
#include <zelcore/Localizer.h>
#include <zelcore/MainLoop.h>
#include <zelcore/StringUtils.h>
#include <zelcore/Utf.h>
#include <zelui/Application.h>
#include <zelui/MessageBox.h>
#include <zelui/SupplierInterface.h>

#include "ManagerSettingsFile.h"
#include "Preferences.h"
#include "WindowTheme.h"

namespace tessaly {

using zelaudiofilterhost::PluginModuleInfoManager;
using zelcore::config::Localize;

namespace messagebox = zelui::dialogs::messagebox;

namespace {

/// How long the dialog may take to be painted in full, in milliseconds.
constexpr unsigned int kPictureDelay = 500;

bool AsksToTryAgain(const zelcore::filesupport::FileError& error) {
    const zelcore::ustring question = zelcore::utility::FillPlaceholders(
        Localize("$$$/tessaly/CatalogueNotSaved=The plug-in choices could not be saved: @0\n\nThey are still in use "
                 "until Tessaly ends. Try again?"),
        {zelcore::utility::UTF8to16(error.what())});
    return messagebox::Messagebox(zelui::drawbot::SupplierInterface::GetDefault(), zelcore::config::GetClientName(),
                                  question, messagebox::kYesButton | messagebox::kNoAnswerButton,
                                  messagebox::kYesButton, messagebox::kIconCaution, nullptr,
                                  messagebox::ButtonHandler(), 0, 0) == messagebox::kYesButton;
}

}  // namespace

ManageCommand::ManageCommand(const CommandLine& line) : mLine(line) {}

int ManageCommand::Run() {
    if (mLine.screenshot.empty() && !zelui::Application::HasDisplay()) {
        std::cerr << "tessaly: there is no display to show the plug-in manager on\n";
        return kExitFailed;
    }
    WindowTheme::Choose(mLine.theme);
    if (!mLine.screenshot.empty()) return RunForScreenshot();
    return RunDialog() ? kExitDone : kExitFailed;
}

bool ManageCommand::RunDialog() {
    zelaudiofilterhostui::AudioPluginManagerSettings settings = ManagerSettingsFile::Load();
    bool saved = true;
    try {
        zelaudiofilterhostui::AudioPluginManager::GetInstance().DoPluginManagerDialog(
            zelui::drawbot::SupplierInterface::GetDefault(), settings, nullptr);
    } catch (const zelcore::filesupport::FileError& error) {
        saved = AsksToTryAgain(error) && SaveAgain();
    }
    if (!ManagerSettingsFile::Save(settings))
        std::cerr << "tessaly: the plug-in manager's place and sort order could not be saved\n";
    return saved;
}

bool ManageCommand::SaveAgain() {
    PluginModuleInfoManager& catalogue = PluginModuleInfoManager::GetInstance();
    for (;;) {
        try {
            catalogue.SaveConfiguration(Preferences::GetCatalogueFile(), true);
            catalogue.GetPluginInfosChangedSignal()();
            return true;
        } catch (const zelcore::filesupport::FileError& error) {
            if (!AsksToTryAgain(error)) return false;
        }
    }
}

int ManageCommand::RunForScreenshot() {
    bool written = false;
    zelcore::threads::MainLoop& loop = *zelcore::threads::MainLoop::GetInstalled();
    const unsigned long timer = loop.StartTimer(kPictureDelay, [this, &written] {
        QWidget* const window = QApplication::activeModalWidget();
        if (window == nullptr) return;
        written = window->grab().save(QString::fromStdString(mLine.screenshot), "PNG");
        zelui::Application::CancelActiveDialog();
    });
    RunDialog();
    loop.StopTimer(timer);
    if (!written) std::cerr << "tessaly: the picture could not be written to '" << mLine.screenshot << "'\n";
    return written ? kExitDone : kExitFailed;
}

}  // namespace tessaly
