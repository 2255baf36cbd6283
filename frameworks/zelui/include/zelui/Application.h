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
    /// HasDisplay tells. Throws std::logic_error when there is one already, or when the host's Qt application object is
    /// not a QApplication.
    Application(int& argc, char** argv);
    /// Closes what is open without telling anybody and drops the calls that are posted.
    ~Application();
    Application(const Application&) = delete;
    Application& operator=(const Application&) = delete;

    /// True when windows can be seen by a person (a real platform, not the offscreen one).
    static bool HasDisplay();

    /// Runs the main loop until Quit; returns the code given there.
    int Run();
    /// Ends Run, or the exec of a host that runs its own; modal dialogs in it end as cancelled. Nothing when none runs.
    void Quit(int exitCode);

    /// Cancels the innermost open dialog that can be cancelled, as its own Cancel or close button would; false when
    /// there is none. Main thread.
    static bool CancelActiveDialog();

private:
    struct State;
    std::unique_ptr<State> mState;
};

}  // namespace zelui
