#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace zeltests {

/// A program run by a test; what it prints goes to files of a throw-away folder. Ended when the object goes.
class Program {
public:
    /// Starts `arguments[0]`, whose ending for programs may be left out, with `environment` ("NAME=value") added to
    /// this process's.
    Program(const std::string& outputFolder, const std::vector<std::string>& arguments,
            const std::vector<std::string>& environment);
    ~Program();
    Program(const Program&) = delete;
    Program& operator=(const Program&) = delete;

    /// What a program is told by a signal of that number (SIGINT, SIGTERM, or kKill, which it cannot catch).
    void Signal(int number);
    /// Whether programs can be told anything but kKill here: on Windows that takes a console.
    static bool CanSignal();
    static const int kKill;
    /// Waits for the end. The exit code, or minus the number of the signal that ended it.
    int Wait();
    bool IsRunning();

    std::string GetOutput() const;
    std::string GetErrors() const;

private:
    std::string mOutputPath;
    std::string mErrorPath;
    std::intptr_t mProcess;
    int mStatus;
    bool mEnded;
};

/// The variable that has a program keep the user's settings below a folder.
std::string SettingsIn(const std::string& folder);

}  // namespace zeltests
