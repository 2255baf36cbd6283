#include "WindowCommand.h"

#include <iostream>
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
    MainWindow window(mLine.theme);
    const InterruptWatch interrupts([&window] { window.EndWithoutAsking(); });
    QObject::connect(qApp, &QGuiApplication::lastWindowClosed, qApp, [&application] { application.Quit(kExitDone); });
    window.show();
    window.TellOfLostRuns(lostRuns);
    if (!mLine.file.empty()) window.GetFiles().OpenAny(mLine.file);
    return application.Run();
}

}  // namespace tessaly
