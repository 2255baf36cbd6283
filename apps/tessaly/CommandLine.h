#pragma once

#include <string>
#include <vector>

#include <zelmediatypes/AudioChannelLayout.h>

#include "RenderOptions.h"
#include "UsageError.h"

namespace tessaly {

/// What the user asked for on the command line.
struct CommandLine {
    enum Command { kHelp, kWindow, kScan, kList, kManage, kEdit, kRender, kTour };
    /// Which colours the windows have; kSystem follows the desktop.
    enum Theme { kSystem, kLight, kDark };

    Command command = kHelp;
    std::string file;        ///< the session or sound to open in the window; empty for none
    bool inProcess = false;  ///< --in-process: load the plug-ins in this process
    bool rescan = false;     ///< --rescan: also what is known and unchanged
    bool json = false;       ///< --json: print for programs
    std::vector<std::string> folders;
    std::string plugin;       ///< what to edit: a path, a component ID or a name
    std::string component;    ///< --component: which of the effects of a file
    bool generic = false;     ///< --generic: the parameters, also of a plug-in with an editor of its own
    bool channelMap = false;  ///< --channel-map: how the track's channels go through the plug-in
    /// --track and --side-chain: where the filter is put; no channels where they were not given.
    zelmediatypes::AudioChannelLayout track, sideChain;
    Theme theme = kSystem;
    std::string screenshot;  ///< --screenshot: where to write a picture of the window, instead of waiting for the user
    RenderOptions render;
    std::string out = "out";  ///< --out: the folder that the tour writes into

    /// `arguments` without the program's name. Throws UsageError.
    static CommandLine Parse(const std::vector<std::string>& arguments);

    static const char* GetUsage();
};

/// How the program ends.
enum ExitCode {
    kExitDone = 0,
    kExitFailed = 1,      ///< something went wrong that a message explains
    kExitUsage = 2,       ///< the command line made no sense
    kExitIncomplete = 3,  ///< a scan or a render ended, or was cancelled, before it was complete
};

}  // namespace tessaly
