#pragma once

#include "CommandLine.h"

namespace zelui {
class Application;
}

namespace tessaly {

/// `tessaly [FILE]`: the application's window, until it is closed. Main thread.
class WindowCommand {
public:
    explicit WindowCommand(const CommandLine& line);

    /// Returns the program's exit code.
    int Run(zelui::Application& application);

private:
    CommandLine mLine;
};

}  // namespace tessaly
