#include "ChildRun.h"

#include <cstdio>
#include <fcntl.h>
#include <fstream>
#include <signal.h>
#include <sys/wait.h>
#include <unistd.h>

#include "DescribeForTest.h"

namespace zeltests {

const char* const ChildRun::kCrashedLoading = "crashed";

namespace {

pid_t ToPid(std::intptr_t process) { return static_cast<pid_t>(process); }

}  // namespace

ChildRun::ChildRun(const std::string& plugin) : mPlugin(plugin), mProcess(-1), mState("runs") {
    std::fflush(nullptr);
    mProcess = fork();
    if (mProcess != 0) return;
    const int nowhere = open("/dev/null", O_WRONLY);
    dup2(nowhere, STDOUT_FILENO);
    dup2(nowhere, STDERR_FILENO);
    _exit(IsDescribed(mPlugin) ? kDescribed : kRefused);
}

ChildRun::~ChildRun() {
    if (GetState() != "runs") return;
    kill(ToPid(mProcess), SIGKILL);
    waitpid(ToPid(mProcess), nullptr, 0);
}

std::string ChildRun::GetState() {
    int status = 0;
    if (mState != "runs" || waitpid(ToPid(mProcess), &status, WNOHANG) != mProcess) return mState;
    if (WIFEXITED(status)) mState = "code " + std::to_string(WEXITSTATUS(status));
    if (WIFSIGNALED(status)) {
        const int number = WTERMSIG(status);
        mState = number == SIGSEGV || number == SIGABRT ? "crashed" : "signal " + std::to_string(number);
    }
    return mState;
}

std::size_t ChildRun::GetResidentSize() const {
    std::ifstream stream("/proc/" + std::to_string(mProcess) + "/statm");
    std::size_t total = 0;
    std::size_t resident = 0;
    stream >> total >> resident;
    return resident * static_cast<std::size_t>(sysconf(_SC_PAGESIZE));
}

bool ChildRun::IsAsleep() const {
    std::ifstream stream("/proc/" + std::to_string(mProcess) + "/stat");
    std::string number, name, state;
    stream >> number >> name >> state;
    return state == "S";
}

}  // namespace zeltests
