#pragma once

#include <memory>

#include <zelui/Export.h>

namespace zelui {

/// The user interface of a process: holds Qt's application object and the main loop of zelcore::threads. One at a time,
/// on the main thread, before any window and until the last one has gone. A host that has made its own QApplication
/// keeps it; then only the main loop is installed.
class ZELUI_API Application {
public:
    /// `argc` and `argv` must outlive the object. Where no display can be reached the windows are made offscreen:
    /// HasDisplay tells.
    Application(int& argc, char** argv);
    ~Application();
    Application(const Application&) = delete;
    Application& operator=(const Application&) = delete;

    /// True when windows can be seen by a person (a real platform, not the offscreen one).
    static bool HasDisplay();

    /// Runs the main loop until Quit; returns the code given there.
    int Run();
    void Quit(int exitCode);

    /// Cancels the innermost open dialog as its own Cancel or close button would; false when none is open. Main thread.
    static bool CancelActiveDialog();

private:
    struct State;
    std::unique_ptr<State> mState;
};

}  // namespace zelui
