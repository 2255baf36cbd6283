#include "ProcessSupport.h"

#include <csignal>
#include <cstdio>
#include <cstdlib>

#include <fcntl.h>
#include <sys/prctl.h>
#include <sys/resource.h>
#include <unistd.h>

namespace zelaudiofilterscan {

namespace {

const pid_t gStarter = getppid();

}  // namespace

std::vector<std::string> ProcessSupport::GetArguments(int argumentCount, char** arguments) {
    return std::vector<std::string>(arguments + 1, arguments + argumentCount);
}

void ProcessSupport::PrepareServer() {
    prctl(PR_SET_PDEATHSIG, SIGKILL);
    const rlimit none = {0, 0};
    setrlimit(RLIMIT_CORE, &none);
    // A result file that may not grow any more is an error to report, not the fault of the plug-in that is described.
    std::signal(SIGXFSZ, SIG_IGN);
    const char* log = std::getenv("ZEL_SCANNER_LOG");
    int target = log && *log ? open(log, O_WRONLY | O_CREAT | O_APPEND | O_CLOEXEC, 0600) : -1;
    if (target < 0) target = open("/dev/null", O_RDWR | O_CLOEXEC);
    const int nothing = open("/dev/null", O_RDONLY | O_CLOEXEC);
    dup2(nothing, STDIN_FILENO);
    dup2(target, STDOUT_FILENO);
    dup2(target, STDERR_FILENO);
}

int ProcessSupport::PrepareManual() {
    const int output = fcntl(STDOUT_FILENO, F_DUPFD_CLOEXEC, 3);
    dup2(STDERR_FILENO, STDOUT_FILENO);
    return output;
}

void ProcessSupport::Write(int descriptor, const std::string& text) {
    std::size_t written = 0;
    while (written < text.size()) {
        const ssize_t count = write(descriptor, text.data() + written, text.size() - written);
        if (count <= 0) return;
        written += static_cast<std::size_t>(count);
    }
}

unsigned long ProcessSupport::GetStarter() { return static_cast<unsigned long>(gStarter); }

bool ProcessSupport::IsOrphaned() { return getppid() != gStarter; }

std::size_t ProcessSupport::GetResidentMegabytes() {
    std::FILE* file = std::fopen("/proc/self/statm", "re");
    if (!file) return 0;
    unsigned long total = 0;
    unsigned long resident = 0;
    const int fields = std::fscanf(file, "%lu %lu", &total, &resident);
    std::fclose(file);
    static const std::size_t pageSize = static_cast<std::size_t>(sysconf(_SC_PAGESIZE));
    return fields == 2 ? resident * pageSize / (1024 * 1024) : 0;
}

void ProcessSupport::EndNow(int exitCode) { _exit(exitCode); }

}  // namespace zelaudiofilterscan
