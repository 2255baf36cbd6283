#pragma once

#include "CommandLine.h"

namespace zelui {
class Application;
}

namespace tessaly {

class EditorWindow;

/// `tessaly edit`: shows the editor of one plug-in until its window is closed. Main thread.
class EditCommand {
public:
    explicit EditCommand(const CommandLine& line);

    /// Returns the program's exit code.
    int Run(zelui::Application& application);

private:
    int WriteScreenshot(EditorWindow& window) const;

    CommandLine mLine;
};

}  // namespace tessaly
