#include "support/Program.h"

#include <csignal>

#include <fcntl.h>
#include <gtest/gtest.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include "support/ThrowAwayFolder.h"

extern char** environ;

namespace zeltests {

namespace {

std::vector<char*> ToPointers(const std::vector<std::string>& texts) {
    std::vector<char*> pointers;
    for (const std::string& text : texts) pointers.push_back(const_cast<char*>(text.c_str()));
    pointers.push_back(nullptr);
    return pointers;
}

int ToExitCode(int status) { return WIFEXITED(status) ? WEXITSTATUS(status) : -WTERMSIG(status); }

}  // namespace

Program::Program(const std::string& outputFolder, const std::vector<std::string>& arguments,
                 const std::vector<std::string>& environment)
    : mProcess(0), mStatus(0), mEnded(false) {
    static int count = 0;
    const std::string name = outputFolder + "/program" + std::to_string(++count);
    mOutputPath = name + ".out";
    mErrorPath = name + ".err";
    std::vector<std::string> all = environment;
    for (char** variable = environ; *variable; ++variable) all.push_back(*variable);
    posix_spawn_file_actions_t actions;
    posix_spawn_file_actions_init(&actions);
    posix_spawn_file_actions_addopen(&actions, STDIN_FILENO, "/dev/null", O_RDONLY, 0);
    posix_spawn_file_actions_addopen(&actions, STDOUT_FILENO, mOutputPath.c_str(), O_WRONLY | O_CREAT | O_TRUNC, 0600);
    posix_spawn_file_actions_addopen(&actions, STDERR_FILENO, mErrorPath.c_str(), O_WRONLY | O_CREAT | O_TRUNC, 0600);
    pid_t process = 0;
    const int result = posix_spawn(&process, arguments[0].c_str(), &actions, nullptr, ToPointers(arguments).data(),
                                   ToPointers(all).data());
    posix_spawn_file_actions_destroy(&actions);
    EXPECT_EQ(0, result) << arguments[0];
    mProcess = process;
    mEnded = result != 0;
}

Program::~Program() {
    if (mEnded) return;
    Signal(kKill);
    Wait();
}

const int Program::kKill = SIGKILL;

void Program::Signal(int number) { kill(static_cast<pid_t>(mProcess), number); }

int Program::Wait() {
    if (!mEnded) waitpid(static_cast<pid_t>(mProcess), &mStatus, 0);
    mEnded = true;
    return ToExitCode(mStatus);
}

bool Program::IsRunning() {
    if (!mEnded) mEnded = waitpid(static_cast<pid_t>(mProcess), &mStatus, WNOHANG) == mProcess;
    return !mEnded;
}

std::string Program::GetOutput() const { return ReadFile(mOutputPath); }

std::string Program::GetErrors() const { return ReadFile(mErrorPath); }

bool Program::CanSignal() { return true; }

std::string SettingsIn(const std::string& folder) { return "XDG_CONFIG_HOME=" + folder; }

}  // namespace zeltests
