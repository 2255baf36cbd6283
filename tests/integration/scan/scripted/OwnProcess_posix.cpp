#include "OwnProcess.h"

#include <csignal>

#include <unistd.h>

namespace zeltests::scripted {

namespace {

const pid_t gStarter = getppid();

}  // namespace

const bool kAsksForLingeringPort = true;

unsigned long GetOwnId() { return static_cast<unsigned long>(getpid()); }

bool IsStarterGone() { return getppid() != gStarter; }

void Crash() {
    std::signal(SIGSEGV, SIG_DFL);
    kill(getpid(), SIGSEGV);
    for (;;) pause();
}

void EndNow(int code) { _exit(code); }

}  // namespace zeltests::scripted
