#include "ManageCommand.h"

#include <functional>
#include <iostream>
#include <QApplication>
#include <QPixmap>
#include <QWidget>

#include <zelcore/MainLoop.h>
#include <zelui/Application.h>

#include "PluginManagerWindow.h"
#include "WindowTheme.h"

namespace tessaly {

using zelcore::threads::MainLoop;

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

}  // namespace

ManageCommand::ManageCommand(const CommandLine& line) : mLine(line) {}

int ManageCommand::Run() {
    if (mLine.screenshot.empty() && !zelui::Application::HasDisplay()) {
        std::cerr << "tessaly: there is no display to show the plug-in manager on\n";
        return kExitFailed;
    }
    WindowTheme::Choose(mLine.theme);
    if (!mLine.screenshot.empty()) return RunForScreenshot();
    return PluginManagerWindow::Run(nullptr) ? kExitDone : kExitFailed;
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
        isKept = PluginManagerWindow::Run(nullptr);
    }
    if (!isWritten) std::cerr << "tessaly: the picture could not be written to '" << mLine.screenshot << "'\n";
    return isWritten && isKept ? kExitDone : kExitFailed;
}

}  // namespace tessaly
