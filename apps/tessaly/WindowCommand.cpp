#include "WindowCommand.h"

#include <iostream>
#include <memory>
#include <QApplication>

#include <zelui/Application.h>

#include "InterruptWatch.h"
#include "MainWindow.h"

namespace tessaly {

WindowCommand::WindowCommand(const CommandLine& line) : mLine(line) {}

int WindowCommand::Run(zelui::Application& application) {
    if (!zelui::Application::HasDisplay()) {
        std::cerr << "tessaly: there is no display to show a window on. 'tessaly --help' tells what needs none.\n";
        return kExitFailed;
    }
    // Before this run has a marker of its own.
    const std::vector<RunMarker::LostRun> lostRuns = RunMarker::TakeLostRuns();
    std::unique_ptr<MainWindow> window;
    // From the first moment that the marker is there; it is called from the loop alone.
    const InterruptWatch interrupts([&window] { window->EndWithoutAsking(); });
    window = std::make_unique<MainWindow>(mLine.theme);
    QObject::connect(qApp, &QGuiApplication::lastWindowClosed, qApp, [&application] { application.Quit(kExitDone); });
    window->show();
    window->TellOfLostRuns(lostRuns);
    // From the loop as well: what it has to tell can be interrupted then.
    const auto open = [this, &window] { window->GetFiles().OpenAny(mLine.file); };
    if (!mLine.file.empty()) QMetaObject::invokeMethod(window.get(), open, Qt::QueuedConnection);
    return application.Run();
}

}  // namespace tessaly
