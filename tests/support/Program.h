#pragma once

#include <string>
#include <vector>

#include <sys/types.h>

namespace zeltests {

/// A program run by a test; what it prints goes to files of a throw-away folder. Ended when the object goes.
class Program {
public:
    /// Starts `arguments[0]`, with `environment` ("NAME=value") added to this process's.
    Program(const std::string& outputFolder, const std::vector<std::string>& arguments,
            const std::vector<std::string>& environment);
    ~Program();
    Program(const Program&) = delete;
    Program& operator=(const Program&) = delete;

    void Signal(int number) const;
    /// Waits for the end. The exit code, or minus the number of the signal that ended it.
    int Wait();
    bool IsRunning();

    std::string GetOutput() const;
    std::string GetErrors() const;

private:
    std::string mOutputPath;
    std::string mErrorPath;
    pid_t mPid;
    int mStatus;
    bool mEnded;
};

}  // namespace zeltests
