#include "CommandLine.h"

#include <map>

#include "Arguments.h"
#include "ChannelLayoutName.h"
#include "FilePath.h"

namespace tessaly {

const char* CommandLine::GetUsage() {
    return "Usage: tessaly [FILE]\n"
           "       tessaly COMMAND\n"
           "\n"
           "  [--theme light|dark|system] [FILE]\n"
           "      Open the window: a sound played through a chain of effects. FILE is a session or a sound.\n"
           "  scan [--in-process] [--rescan] [--json] [FOLDER...]\n"
           "      Look for audio plug-ins, in the usual folders or in the given ones, and take what is new or has "
           "changed\n"
           "      into the catalogue. --rescan looks at everything again, --in-process loads the plug-ins in this "
           "process\n"
           "      instead of the scanner process, --json prints the catalogue for programs.\n"
           "  list [--json]\n"
           "      Print the catalogue: what works, what does not and why, and what is banned.\n"
           "  manage [--theme light|dark|system] [--screenshot FILE]\n"
           "      Open the plug-in manager: switch plug-ins on and off, choose the folders, scan, and reload what did "
           "not work.\n"
           "      --screenshot writes a picture of the window and ends.\n"
           "  edit [--generic | --channel-map] [--component NAME] [--track LAYOUT] [--side-chain LAYOUT]\n"
           "       [--theme light|dark|system] [--screenshot FILE] PLUG-IN\n"
           "      Open a plug-in's editor in a window, or with --generic one of its parameters alone, or with "
           "--channel-map one\n"
           "      of how the track's channels go through it. PLUG-IN is a path, or the name or the component ID of one "
           "in the\n"
           "      catalogue; --component says which effect of a file with several. --track and --side-chain say what "
           "channels\n"
           "      it has to do with: mono, stereo, 5.1, 7.1.4, ..., or a number; stereo and none for --channel-map.\n"
           "      --screenshot writes a picture of the window and ends.\n"
           "  render IN OUT --effect PLUG-IN [--component NAME] [--map in=LIST] [--map out=LIST] [--set PARAM=VALUE]\n"
           "       [--effect ...] [--track LAYOUT] [--side-chain FILE] [--block FRAMES] [--tail SECONDS]\n"
           "      Play an audio file through one effect or several, one after the other, into a new file: .wav (32-bit "
           "float),\n"
           "      .flac and .aiff (24 bits), .ogg. OUT appears when it is complete and not before. What stands behind "
           "an\n"
           "      --effect is for that one:\n"
           "        --map   for each of its input or output channels in order the track's channel from 1, or - for "
           "none; those\n"
           "                of the side-chain follow the track's: --map in=2,1,3\n"
           "        --set   a parameter by its number from 1 or its name, and its value from 0 to 1\n"
           "      --track says what IN's channels are for (else what is usual for their number), --side-chain is a "
           "second file\n"
           "      that the effects listen to, --block is how much they get at once (512), --tail how much silence they "
           "get\n"
           "      behind the sound (0). Delays of effects are not compensated. Samples that are no finite numbers are "
           "written\n"
           "      as silence.\n"
           "\n"
           "  tour [--out FOLDER] [--theme light|dark|system]\n"
           "      Scan, open the windows with real plug-ins, play and render; write numbered pictures and the rendered "
           "file into\n"
           "      FOLDER (out).\n"
           "\n"
           "Exit codes: 0 done, 1 failed, 2 wrong usage, 3 the scan did not get to every plug-in, or the render was "
           "cancelled.\n";
}

namespace {

/// Whether the word is a command, and which.
bool FindCommand(const std::string& word, CommandLine::Command& command) {
    static const std::map<std::string, CommandLine::Command> commands{
        {"--help", CommandLine::kHelp}, {"-h", CommandLine::kHelp},       {"help", CommandLine::kHelp},
        {"scan", CommandLine::kScan},   {"list", CommandLine::kList},     {"manage", CommandLine::kManage},
        {"edit", CommandLine::kEdit},   {"render", CommandLine::kRender}, {"tour", CommandLine::kTour},
    };
    const auto found = commands.find(word);
    if (found != commands.end()) command = found->second;
    return found != commands.end();
}

CommandLine::Theme ParseTheme(const std::string& theme) {
    if (theme == "system") return CommandLine::kSystem;
    if (theme == "light") return CommandLine::kLight;
    if (theme == "dark") return CommandLine::kDark;
    throw UsageError("unknown theme '" + theme + "'");
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

bool ParseWindowOption(CommandLine& line, const std::string& option, Arguments& arguments) {
    if (option == "--theme")
        line.theme = ParseTheme(arguments.TakeValueOf(option));
    else if (option == "--screenshot")
        line.screenshot = arguments.TakeValueOf(option);
    else
        return false;
    return true;
}

bool ParseEditOption(CommandLine& line, const std::string& option, Arguments& arguments) {
    if (option == "--generic")
        line.generic = true;
    else if (option == "--channel-map")
        line.channelMap = true;
    else if (option == "--track")
        line.track = ChannelLayoutName::Parse(arguments.TakeValueOf(option));
    else if (option == "--side-chain")
        line.sideChain = ChannelLayoutName::Parse(arguments.TakeValueOf(option));
    else if (option == "--component")
        line.component = arguments.TakeValueOf(option);
    else
        return ParseWindowOption(line, option, arguments);
    return true;
}

bool ParseOption(CommandLine& line, const std::string& option, Arguments& arguments) {
    switch (line.command) {
        case CommandLine::kScan:
            return ParseScanOption(line, option);
        case CommandLine::kList:
            line.json = option == "--json";
            return line.json;
        case CommandLine::kManage:
            return ParseWindowOption(line, option, arguments);
        case CommandLine::kEdit:
            return ParseEditOption(line, option, arguments);
        case CommandLine::kRender:
            return line.render.ParseOption(option, arguments);
        case CommandLine::kWindow:
            return option == "--theme" && ParseWindowOption(line, option, arguments);
        case CommandLine::kTour:
            if (option != "--out") return option == "--theme" && ParseWindowOption(line, option, arguments);
            line.out = arguments.TakeValueOf(option);
            return true;
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
    if (line.command == CommandLine::kRender) return line.render.ParsePlainArgument(argument);
    if (line.command == CommandLine::kWindow && line.file.empty()) {
        // A word that is neither a command nor a file is a command that was mistyped.
        if (!std::filesystem::exists(ToFilePath(argument)))
            throw UsageError("no such command and no such file: '" + argument + "'");
        line.file = argument;
        return true;
    }
    if (line.command != CommandLine::kEdit || !line.plugin.empty()) return false;
    line.plugin = argument;
    return true;
}

}  // namespace

CommandLine CommandLine::Parse(const std::vector<std::string>& words) {
    CommandLine line;
    line.command = kWindow;
    const bool named = !words.empty() && FindCommand(words.front(), line.command);
    if (line.command == kHelp) return line;
    Arguments arguments(words, named ? 1 : 0);
    bool optionsEnded = false;
    while (!arguments.AtEnd()) {
        const std::string argument = arguments.Take();
        const bool option = !optionsEnded && argument.size() > 1 && argument[0] == '-';
        if (option && argument == "--")
            optionsEnded = true;
        else if (option && !ParseOption(line, argument, arguments))
            throw UsageError("unknown option '" + argument + "'");
        else if (!option && !ParsePlainArgument(line, argument))
            throw UsageError("unexpected argument '" + argument + "'");
    }
    if (line.command == kEdit && line.plugin.empty()) throw UsageError("say which plug-in to edit");
    if (line.command == kEdit && line.generic && line.channelMap)
        throw UsageError("--generic and --channel-map are two windows; choose one");
    if (line.command == kRender) line.render.CheckComplete();
    return line;
}

}  // namespace tessaly
