// Works, but leaves the process changed: folder, locale, signals, floating-point mode, handlers of the runtime.
#include <csignal>
#include <exception>
#include <new>

#include <locale.h>
#include <unistd.h>

#include <cfenv>

#include "support/Vst2Plugin.h"

namespace {

using namespace zeltestplugins;

void Ignore(int) {}
[[noreturn]] void Terminate() { _exit(99); }
void OutOfMemory() { throw std::bad_alloc(); }

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

}  // namespace

ZEL_VST2_ENTRY {
    ChangeEverything();
    return (new Vst2Plugin(
                host, {.name = "Zel Careless", .id = 0x5A436172, .inputs = 2, .outputs = 2, .version = 0x02000103}))
        ->GetEffect();
}
