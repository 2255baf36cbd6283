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
           "\n"
           "Exit codes: 0 done, 1 failed, 2 wrong usage, 3 the scan did not get to every plug-in.\n";
}

CommandLine CommandLine::Parse(const std::vector<std::string>& arguments) {
    CommandLine line;
    if (arguments.empty()) throw Error("a command is missing");
    const std::string& command = arguments.front();
    if (command == "--help" || command == "-h" || command == "help") return line;
    if (command == "scan")
        line.command = kScan;
    else if (command == "list")
        line.command = kList;
    else
        throw Error("unknown command '" + command + "'");

    const bool scan = line.command == kScan;
    bool optionsEnded = false;
    for (std::size_t i = 1; i < arguments.size(); ++i) {
        const std::string& argument = arguments[i];
        if (!optionsEnded && argument == "--")
            optionsEnded = true;
        else if (!optionsEnded && argument == "--json")
            line.json = true;
        else if (!optionsEnded && scan && argument == "--in-process")
            line.inProcess = true;
        else if (!optionsEnded && scan && argument == "--rescan")
            line.rescan = true;
        else if (!optionsEnded && argument.size() > 1 && argument[0] == '-')
            throw Error("unknown option '" + argument + "'");
        else if (scan && !argument.empty())
            line.folders.push_back(argument);
        else
            throw Error("unexpected argument '" + argument + "'");
    }
    return line;
}

}  // namespace tessaly
