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
    : mPid(0), mStatus(0), mEnded(false) {
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
    const int result = posix_spawn(&mPid, arguments[0].c_str(), &actions, nullptr, ToPointers(arguments).data(),
                                   ToPointers(all).data());
    posix_spawn_file_actions_destroy(&actions);
    EXPECT_EQ(0, result) << arguments[0];
    mEnded = result != 0;
}

Program::~Program() {
    if (mEnded) return;
    kill(mPid, SIGKILL);
    Wait();
}

void Program::Signal(int number) const { kill(mPid, number); }

int Program::Wait() {
    if (!mEnded) waitpid(mPid, &mStatus, 0);
    mEnded = true;
    return ToExitCode(mStatus);
}

bool Program::IsRunning() {
    if (!mEnded) mEnded = waitpid(mPid, &mStatus, WNOHANG) == mPid;
    return !mEnded;
}

std::string Program::GetOutput() const { return ReadFile(mOutputPath); }

std::string Program::GetErrors() const { return ReadFile(mErrorPath); }

}  // namespace zeltests
