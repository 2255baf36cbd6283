#include <exception>
#include <iostream>
#include <string>
#include <vector>

#include <zelaudiofilterhostui/Module.h>
#include <zelcore/SimpleMainLoop.h>
#include <zelui/Application.h>

#include "CatalogueReport.h"
#include "CommandLine.h"
#include "Console.h"
#include "EditCommand.h"
#include "ManageCommand.h"
#include "Preferences.h"
#include "RenderCommand.h"
#include "ScanCommand.h"
#include "StartUpCheck.h"
#include "TourCommand.h"
#include "UserLanguage.h"
#include "WindowCommand.h"

using namespace tessaly;

namespace {

int List(const CommandLine& line) {
    Preferences::Load();
    const CatalogueReport report;
    std::cout << (line.json ? report.ToJson() : report.ToTable());
    return kExitDone;
}

/// The library, as long as it lives.
class Library {
public:
    Library() { zelaudiofilterhostui::Initialize(); }
    ~Library() { zelaudiofilterhostui::Terminate(); }
    Library(const Library&) = delete;
    Library& operator=(const Library&) = delete;
};

/// The commands that may show something.
int RunWithWindows(const CommandLine& line, int& argc, char** argv) {
    if (line.command == CommandLine::kWindow) Console::CloseOwn();
    zelui::Application application(argc, argv);
    UserLanguage::Load();
    const Library library;
    StartUpCheck::Run();
    if (line.command == CommandLine::kScan) return ScanCommand(line).Run();
    if (line.command == CommandLine::kManage) return ManageCommand(line).Run();
    if (line.command == CommandLine::kWindow) return WindowCommand(line).Run(application);
    if (line.command == CommandLine::kTour) return TourCommand(line).Run();
    return EditCommand(line).Run(application);
}

int Render(const CommandLine& line) {
    zelcore::threads::SimpleMainLoop loop;
    Preferences::Load();
    return RenderCommand(line.render, loop).Run();
}

int RunCommand(const CommandLine& line, int& argc, char** argv) {
    switch (line.command) {
        case CommandLine::kScan:
        case CommandLine::kManage:
        case CommandLine::kEdit:
        case CommandLine::kWindow:
        case CommandLine::kTour:
            return RunWithWindows(line, argc, argv);
        case CommandLine::kList:
            return List(line);
        case CommandLine::kRender:
            return Render(line);
        case CommandLine::kHelp:
            break;
    }
    std::cout << CommandLine::GetUsage();
    return kExitDone;
}

}  // namespace

int main(int argc, char** argv) {
    const Console console;
    try {
        const CommandLine line = CommandLine::Parse(Console::GetArguments(argc, argv));
        const int code = RunCommand(line, argc, argv);
        std::cout.flush();
        if (!std::cout) {
            std::cerr << "tessaly: the output could not be written\n";
            return kExitFailed;
        }
        return code;
    } catch (const UsageError& error) {
        std::cerr << "tessaly: " << error.what() << "\n\n" << CommandLine::GetUsage();
        return kExitUsage;
    } catch (const std::exception& error) {
        std::cerr << "tessaly: " << error.what() << '\n';
        return kExitFailed;
    }
}
