#include "ProcessStateGuard.h"

#include <fcntl.h>
#include <signal.h>
#include <unistd.h>

#include <array>
#include <cfenv>
#include <clocale>
#include <exception>
#include <new>
#include <string>

namespace zelaudiofilterhost {

namespace {

constexpr std::array kSignals = {SIGHUP,  SIGINT,  SIGQUIT, SIGILL,  SIGABRT, SIGBUS,  SIGFPE, SIGSEGV,
                                 SIGPIPE, SIGALRM, SIGTERM, SIGUSR1, SIGUSR2, SIGCHLD, SIGTRAP};

std::string CurrentLocale() {
    const char* const name = std::setlocale(LC_ALL, nullptr);
    return name == nullptr ? std::string() : std::string(name);
}

}  // namespace

struct ProcessStateGuard::State {
    int folder = -1;
    std::string locale;
    std::fenv_t floatingPoint = {};
    sigset_t mask = {};
    std::array<struct sigaction, kSignals.size()> actions = {};
    std::terminate_handler terminateHandler = nullptr;
    std::new_handler newHandler = nullptr;
};

ProcessStateGuard::ProcessStateGuard() : mState(std::make_unique<State>()) {
    // Held open rather than named, so that it is found again wherever it is moved.
    mState->folder = open(".", O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    mState->locale = CurrentLocale();
    std::fegetenv(&mState->floatingPoint);
    pthread_sigmask(SIG_SETMASK, nullptr, &mState->mask);
    for (std::size_t i = 0; i < kSignals.size(); ++i) sigaction(kSignals[i], nullptr, &mState->actions[i]);
    mState->terminateHandler = std::get_terminate();
    mState->newHandler = std::get_new_handler();
}

ProcessStateGuard::~ProcessStateGuard() {
    std::set_new_handler(mState->newHandler);
    std::set_terminate(mState->terminateHandler);
    for (std::size_t i = 0; i < kSignals.size(); ++i) sigaction(kSignals[i], &mState->actions[i], nullptr);
    pthread_sigmask(SIG_SETMASK, &mState->mask, nullptr);
    std::fesetenv(&mState->floatingPoint);
    // Setting a locale is not safe beside other threads that use it, so only when there is need.
    if (!mState->locale.empty() && CurrentLocale() != mState->locale) std::setlocale(LC_ALL, mState->locale.c_str());
    if (mState->folder >= 0) {
        [[maybe_unused]] const int unchanged = fchdir(mState->folder);
        close(mState->folder);
    }
}

}  // namespace zelaudiofilterhost
