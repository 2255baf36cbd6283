#pragma once

#include "CommandLine.h"

namespace tessaly {

/// `tessaly manage`: shows the plug-in manager until it is closed. Main thread.
class ManageCommand {
public:
    explicit ManageCommand(const CommandLine& line);

    /// Returns the program's exit code.
    int Run();

private:
    int RunForScreenshot();

    CommandLine mLine;
};

}  // namespace tessaly
