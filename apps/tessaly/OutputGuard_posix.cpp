#include <cstdio>

#include <fcntl.h>
#include <unistd.h>

#include "OutputGuard.h"

namespace tessaly {

OutputGuard::OutputGuard() : mOutput(-1) {
    std::fflush(stdout);
    mOutput = fcntl(STDOUT_FILENO, F_DUPFD_CLOEXEC, 3);
    if (mOutput >= 0) dup2(STDERR_FILENO, STDOUT_FILENO);
}

OutputGuard::~OutputGuard() {
    if (mOutput < 0) return;
    // What plug-ins left in the buffer must not come out behind the result.
    std::fflush(stdout);
    dup2(mOutput, STDOUT_FILENO);
    close(mOutput);
}

}  // namespace tessaly
