#include <exception>
#include <iostream>
#include <string>
#include <vector>

#include <zelcore/SimpleMainLoop.h>
#include <zelui/Application.h>

#include "CatalogueReport.h"
#include "CommandLine.h"
#include "EditCommand.h"
#include "Preferences.h"
#include "RenderCommand.h"
#include "ScanCommand.h"

using namespace tessaly;

namespace {

int List(const CommandLine& line) {
    Preferences::Load();
    const CatalogueReport report;
    std::cout << (line.json ? report.ToJson() : report.ToTable());
    return kExitDone;
}

int Scan(const CommandLine& line, int& argc, char** argv) {
    const zelui::Application application(argc, argv);
    Preferences::Load();
    return ScanCommand(line).Run();
}

int Edit(const CommandLine& line, int& argc, char** argv) {
    zelui::Application application(argc, argv);
    Preferences::Load();
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
            return Scan(line, argc, argv);
        case CommandLine::kList:
            return List(line);
        case CommandLine::kEdit:
            return Edit(line, argc, argv);
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
    try {
        const CommandLine line = CommandLine::Parse(std::vector<std::string>(argv + 1, argv + argc));
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
