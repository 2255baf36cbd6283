#include "ManageCommand.h"

#include <functional>
#include <iostream>
#include <QApplication>
#include <QPixmap>
#include <QWidget>

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
#include "WindowTheme.h"

namespace tessaly {

using zelcore::config::Localize;
using zelcore::threads::MainLoop;

namespace messagebox = zelui::dialogs::messagebox;

namespace {

/// How long the dialog may take to be painted in full, in milliseconds.
constexpr int kPictureDelay = 500;

/// A timer that ends with the object.
class Timer {
public:
    Timer(int milliseconds, const std::function<void()>& function)
        : mId(MainLoop::GetInstalled()->StartTimer(milliseconds, function)) {}
    ~Timer() { MainLoop::GetInstalled()->StopTimer(mId); }
    Timer(const Timer&) = delete;
    Timer& operator=(const Timer&) = delete;

private:
    const unsigned long mId;
};

/// The manager's window; null while another one is in front of it, or none is there.
QWidget* FindManager() {
    QWidget* const window = QApplication::activeModalWidget();
    return window != nullptr && window->findChild<QWidget*>("PluginList") != nullptr ? window : nullptr;
}

bool AsksToOpenAgain(const zelcore::filesupport::FileError& error) {
    const zelcore::ustring question = zelcore::utility::FillPlaceholders(
        Localize("$$$/tessaly/CatalogueNotKept=The plug-in manager's changes could not be saved or taken back: "
                 "@0\n\nOpen the plug-in manager again, with everything as it was left? Otherwise what was not saved "
                 "is lost."),
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
    bool isKept = false;
    for (bool again = true; again && !isKept;) {
        try {
            zelaudiofilterhostui::AudioPluginManager::GetInstance().DoPluginManagerDialog(
                zelui::drawbot::SupplierInterface::GetDefault(), settings, nullptr);
            isKept = true;
        } catch (const zelcore::filesupport::FileError& error) {
            again = AsksToOpenAgain(error);
        }
    }
    if (!ManagerSettingsFile::Save(settings))
        std::cerr << "tessaly: the plug-in manager's place and sort order could not be saved\n";
    return isKept;
}

int ManageCommand::RunForScreenshot() {
    bool isWritten = false;
    bool isKept = false;
    {
        const Timer timer(kPictureDelay, [this, &isWritten] {
            if (QWidget* const window = FindManager())
                isWritten = window->grab().save(QString::fromStdString(mLine.screenshot), "PNG");
            // Whatever is in front: nobody is there to answer it.
            zelui::Application::CancelActiveDialog();
        });
        isKept = RunDialog();
    }
    if (!isWritten) std::cerr << "tessaly: the picture could not be written to '" << mLine.screenshot << "'\n";
    return isWritten && isKept ? kExitDone : kExitFailed;
}

}  // namespace tessaly
