#include "support/CarelessProcess.h"

#include <csignal>
#include <exception>
#include <new>

#include <locale.h>
#include <unistd.h>

#include <cfenv>

namespace zeltestplugins {

namespace {

void Ignore(int) {}
[[noreturn]] void Terminate() { _exit(99); }
void OutOfMemory() { throw std::bad_alloc(); }

}  // namespace

void ChangeEverything() {
    [[maybe_unused]] const int moved = chdir("/");
    setlocale(LC_ALL, "C.UTF-8");
    signal(SIGSEGV, Ignore);
    signal(SIGPIPE, Ignore);
    sigset_t mask;
    sigfillset(&mask);
    pthread_sigmask(SIG_SETMASK, &mask, nullptr);
    std::fesetround(FE_TOWARDZERO);
    std::set_terminate(Terminate);
    std::set_new_handler(OutOfMemory);
}

}  // namespace zeltestplugins
