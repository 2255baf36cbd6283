#include "CommandLine.h"

namespace tessaly {

const char* CommandLine::GetUsage() {
    return "Usage: tessaly COMMAND\n"
           "\n"
           "  scan [--in-process] [--rescan] [--json] [FOLDER...]\n"
           "      Look for audio plug-ins, in the usual folders or in the given ones, and take what is new or has "
           "changed\n"
           "      into the catalogue. --rescan looks at everything again, --in-process loads the plug-ins in this "
           "process\n"
           "      instead of the scanner process, --json prints the catalogue for programs.\n"
           "  list [--json]\n"
           "      Print the catalogue: what works, what does not and why, and what is banned.\n"
           "  edit [--generic] [--component NAME] [--theme light|dark|system] [--screenshot FILE] PLUG-IN\n"
           "      Open a plug-in's editor in a window, or with --generic one of its parameters alone. PLUG-IN is a "
           "path, "
           "or the\n"
           "      name or the component ID of one in the catalogue; --component says which effect of a file with "
           "several.\n"
           "      --screenshot writes a picture of the window and ends.\n"
           "\n"
           "Exit codes: 0 done, 1 failed, 2 wrong usage, 3 the scan did not get to every plug-in.\n";
}

namespace {

/// The arguments after the command, one after the other.
class Arguments {
public:
    explicit Arguments(const std::vector<std::string>& arguments) : mArguments(arguments), mNext(1) {}

    bool AtEnd() const { return mNext == mArguments.size(); }
    std::string Take() { return mArguments[mNext++]; }
    std::string TakeValueOf(const std::string& option) {
        if (AtEnd()) throw CommandLine::Error("a value is missing after '" + option + "'");
        return Take();
    }

private:
    const std::vector<std::string>& mArguments;
    std::size_t mNext;
};

CommandLine::Command ParseCommand(const std::string& command) {
    if (command == "--help" || command == "-h" || command == "help") return CommandLine::kHelp;
    if (command == "scan") return CommandLine::kScan;
    if (command == "list") return CommandLine::kList;
    if (command == "edit") return CommandLine::kEdit;
    throw CommandLine::Error("unknown command '" + command + "'");
}

CommandLine::Theme ParseTheme(const std::string& theme) {
    if (theme == "system") return CommandLine::kSystem;
    if (theme == "light") return CommandLine::kLight;
    if (theme == "dark") return CommandLine::kDark;
    throw CommandLine::Error("unknown theme '" + theme + "'");
}

bool ParseScanOption(CommandLine& line, const std::string& option) {
    if (option == "--json")
        line.json = true;
    else if (option == "--in-process")
        line.inProcess = true;
    else if (option == "--rescan")
        line.rescan = true;
    else
        return false;
    return true;
}

bool ParseEditOption(CommandLine& line, const std::string& option, Arguments& arguments) {
    if (option == "--generic")
        line.generic = true;
    else if (option == "--component")
        line.component = arguments.TakeValueOf(option);
    else if (option == "--theme")
        line.theme = ParseTheme(arguments.TakeValueOf(option));
    else if (option == "--screenshot")
        line.screenshot = arguments.TakeValueOf(option);
    else
        return false;
    return true;
}

bool ParseOption(CommandLine& line, const std::string& option, Arguments& arguments) {
    switch (line.command) {
        case CommandLine::kScan:
            return ParseScanOption(line, option);
        case CommandLine::kList:
            line.json = option == "--json";
            return line.json;
        case CommandLine::kEdit:
            return ParseEditOption(line, option, arguments);
        case CommandLine::kHelp:
            break;
    }
    return false;
}

bool ParsePlainArgument(CommandLine& line, const std::string& argument) {
    if (argument.empty()) return false;
    if (line.command == CommandLine::kScan) {
        line.folders.push_back(argument);
        return true;
    }
    if (line.command != CommandLine::kEdit || !line.plugin.empty()) return false;
    line.plugin = argument;
    return true;
}

}  // namespace

CommandLine CommandLine::Parse(const std::vector<std::string>& words) {
    if (words.empty()) throw Error("a command is missing");
    CommandLine line;
    line.command = ParseCommand(words.front());
    if (line.command == kHelp) return line;
    Arguments arguments(words);
    bool optionsEnded = false;
    while (!arguments.AtEnd()) {
        const std::string argument = arguments.Take();
        const bool option = !optionsEnded && argument.size() > 1 && argument[0] == '-';
        if (option && argument == "--")
            optionsEnded = true;
        else if (option && !ParseOption(line, argument, arguments))
            throw Error("unknown option '" + argument + "'");
        else if (!option && !ParsePlainArgument(line, argument))
            throw Error("unexpected argument '" + argument + "'");
    }
    if (line.command == kEdit && line.plugin.empty()) throw Error("say which plug-in to edit");
    return line;
}

}  // namespace tessaly
