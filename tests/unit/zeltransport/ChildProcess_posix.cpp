#include "ChildProcess.h"

#include <csignal>

#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>

namespace zeltests {

ChildProcess::ChildProcess(const std::function<void()>& function) : mProcess(::fork()) {
    EXPECT_GE(mProcess, 0);
    if (mProcess != 0) return;
    function();
    ::_exit(0);
}

ChildProcess::~ChildProcess() {
    if (mProcess <= 0) return;
    ::kill(mProcess, SIGKILL);
    int status = 0;
    ::waitpid(mProcess, &status, 0);
}

}  // namespace zeltests
