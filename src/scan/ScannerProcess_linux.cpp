#include "scan/ScannerProcess.h"

#include <cerrno>
#include <csignal>
#include <cstdint>
#include <cstring>
#include <ctime>
#include <string>

#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>
#include <zelaudiofilterhost/ScanProtocol.h>
#include <zelcore/Utf.h>

extern char** environ;

namespace zelaudiofilterhostui {

namespace {

/// How long DescribeEnd waits: the connection of a dying process closes a moment before the process is over.
constexpr int kEndPatienceMilliseconds = 50;

pid_t ToPid(void* process) { return static_cast<pid_t>(reinterpret_cast<std::intptr_t>(process)); }

/// Looks at a process without taking notice of its end, so that its number stays reserved until it is reaped.
bool HasEnded(void* process, siginfo_t& info) {
    std::memset(&info, 0, sizeof info);
    const int result = waitid(P_PID, static_cast<id_t>(ToPid(process)), &info, WEXITED | WNOHANG | WNOWAIT);
    return result != 0 || info.si_pid != 0;
}

void KillAndReap(void* process) {
    if (!process) return;
    const pid_t pid = ToPid(process);
    siginfo_t info;
    // A host that reaps every child itself may have given the number back already; it could be anybody's by now.
    if (waitid(P_PID, static_cast<id_t>(pid), &info, WEXITED | WNOHANG | WNOWAIT) != 0) return;
    // The scanner leads a group of its own, with whatever a plug-in started.
    kill(-pid, SIGKILL);
    kill(pid, SIGKILL);
    while (waitpid(pid, nullptr, 0) < 0 && errno == EINTR) {
    }
}

std::string DescribeExit(const siginfo_t& info) {
    if (info.si_code == CLD_KILLED || info.si_code == CLD_DUMPED) {
        const char* name = sigdescr_np(info.si_status);
        return std::string("crashed while it was scanned: ") + (name ? name : "unknown signal");
    }
    if (info.si_status == zelaudiofilterhost::scanprotocol::kScannerExitHang)
        return "did not answer within the time limit while it was scanned";
    if (info.si_status == zelaudiofilterhost::scanprotocol::kScannerExitMemory)
        return "took more memory than the limit while it was scanned";
    return "ended the scanner process (exit code " + std::to_string(info.si_status) + ")";
}

/// Attributes of a child that starts like a program of its own: its own group, no blocked or ignored signals.
class SpawnAttributes {
public:
    SpawnAttributes() {
        posix_spawnattr_init(&mAttributes);
        sigset_t none;
        sigset_t all;
        sigemptyset(&none);
        sigfillset(&all);
        posix_spawnattr_setsigmask(&mAttributes, &none);
        posix_spawnattr_setsigdefault(&mAttributes, &all);
        posix_spawnattr_setpgroup(&mAttributes, 0);
        posix_spawnattr_setflags(&mAttributes, POSIX_SPAWN_SETSIGMASK | POSIX_SPAWN_SETSIGDEF | POSIX_SPAWN_SETPGROUP);
    }
    ~SpawnAttributes() { posix_spawnattr_destroy(&mAttributes); }
    SpawnAttributes(const SpawnAttributes&) = delete;
    SpawnAttributes& operator=(const SpawnAttributes&) = delete;

    const posix_spawnattr_t* Get() const { return &mAttributes; }

private:
    posix_spawnattr_t mAttributes;
};

/// File actions that leave the child no descriptor but the standard three.
class SpawnFileActions {
public:
    SpawnFileActions() {
        posix_spawn_file_actions_init(&mActions);
        posix_spawn_file_actions_addclosefrom_np(&mActions, 3);
    }
    ~SpawnFileActions() { posix_spawn_file_actions_destroy(&mActions); }
    SpawnFileActions(const SpawnFileActions&) = delete;
    SpawnFileActions& operator=(const SpawnFileActions&) = delete;

    const posix_spawn_file_actions_t* Get() const { return &mActions; }

private:
    posix_spawn_file_actions_t mActions;
};

}  // namespace

void* ScannerProcess::Start(const zelcore::filesupport::File& executable) {
    const zelcore::utf8string path = zelcore::utility::UTF16to8(executable.FullPath());
    std::string name(path.c_str());
    char* const arguments[] = {name.data(), nullptr};
    const SpawnAttributes attributes;
    const SpawnFileActions actions;
    pid_t pid = 0;
    if (posix_spawn(&pid, path.c_str(), actions.Get(), attributes.Get(), arguments, environ) != 0) return nullptr;
    return reinterpret_cast<void*>(static_cast<std::intptr_t>(pid));
}

void ScannerProcess::Abandon(void* process) {
    // Here a process that nobody waits for would stay in the process table, and one that lost its connection but lives
    // on would hold the port; so it is ended for good.
    KillAndReap(process);
}

void ScannerProcess::Terminate(void* process) { KillAndReap(process); }

unsigned long ScannerProcess::GetId(void* process) { return static_cast<unsigned long>(ToPid(process)); }

bool ScannerProcess::IsRunning(void* process) {
    siginfo_t info;
    return process && !HasEnded(process, info);
}

zelcore::ustring ScannerProcess::DescribeEnd(void* process) {
    siginfo_t info;
    if (!process) return zelcore::ustring();
    for (int waited = 0; !HasEnded(process, info); ++waited) {
        if (waited == kEndPatienceMilliseconds) return zelcore::ustring();
        const timespec moment = {0, 1000000};
        nanosleep(&moment, nullptr);
    }
    if (info.si_pid == 0) return zelcore::ustring();
    return zelcore::utility::AsciiToUTF16(DescribeExit(info));
}

}  // namespace zelaudiofilterhostui
