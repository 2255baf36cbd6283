#include "ProcessStateGuard.h"

#include <windows.h>

#include <csignal>

#include <array>
#include <cfenv>
#include <clocale>
#include <cstdlib>
#include <exception>
#include <new>
#include <string>

#include "WidePath_win32.h"

namespace zelaudiofilterhost {

namespace {

constexpr std::array kSignals = {SIGINT, SIGILL, SIGFPE, SIGSEGV, SIGTERM, SIGBREAK, SIGABRT};

typedef void (*SignalHandler)(int);

std::string CurrentLocale() {
    const char* const name = std::setlocale(LC_ALL, nullptr);
    return name == nullptr ? std::string() : std::string(name);
}

/// What a call of the system's that fills a buffer gives.
template <typename Function>
std::wstring ReadText(Function function) {
    std::wstring text(kMaxWidePath, L'\0');
    const DWORD length = function(static_cast<DWORD>(text.size()), text.data());
    text.resize(length < text.size() ? length : 0);
    return text;
}

/// The runtime tells what the handler was only to those who set another one.
SignalHandler HandlerOf(int number) {
    const SignalHandler handler = signal(number, SIG_DFL);
    if (handler != SIG_ERR && handler != SIG_DFL) signal(number, handler);
    return handler;
}

LPTOP_LEVEL_EXCEPTION_FILTER CurrentExceptionFilter() {
    const LPTOP_LEVEL_EXCEPTION_FILTER filter = SetUnhandledExceptionFilter(nullptr);
    SetUnhandledExceptionFilter(filter);
    return filter;
}

}  // namespace

struct ProcessStateGuard::State {
    std::wstring folder;
    std::wstring libraryFolder;
    std::string locale;
    std::fenv_t floatingPoint = {};
    UINT errorMode = 0;
    DWORD threadErrorMode = 0;
    LPTOP_LEVEL_EXCEPTION_FILTER exceptionFilter = nullptr;
    std::array<SignalHandler, kSignals.size()> handlers = {};
    std::terminate_handler terminateHandler = nullptr;
    std::new_handler newHandler = nullptr;
};

ProcessStateGuard::ProcessStateGuard() : mState(std::make_unique<State>()) {
    mState->folder = ReadText(GetCurrentDirectoryW);
    mState->libraryFolder = ReadText(GetDllDirectoryW);
    mState->locale = CurrentLocale();
    std::fegetenv(&mState->floatingPoint);
    mState->errorMode = GetErrorMode();
    mState->threadErrorMode = GetThreadErrorMode();
    mState->exceptionFilter = CurrentExceptionFilter();
    for (std::size_t i = 0; i < kSignals.size(); ++i) mState->handlers[i] = HandlerOf(kSignals[i]);
    mState->terminateHandler = std::get_terminate();
    mState->newHandler = std::get_new_handler();
}

ProcessStateGuard::~ProcessStateGuard() {
    std::set_new_handler(mState->newHandler);
    std::set_terminate(mState->terminateHandler);
    for (std::size_t i = 0; i < kSignals.size(); ++i) {
        if (mState->handlers[i] != SIG_ERR) signal(kSignals[i], mState->handlers[i]);
    }
    SetUnhandledExceptionFilter(mState->exceptionFilter);
    SetErrorMode(mState->errorMode);
    SetThreadErrorMode(mState->threadErrorMode, nullptr);
    std::fesetenv(&mState->floatingPoint);
    // Setting a locale is not safe beside other threads that use it, so only when there is need.
    if (!mState->locale.empty() && CurrentLocale() != mState->locale) std::setlocale(LC_ALL, mState->locale.c_str());
    // None is what the system searches by default; an empty text would take the current folder out of the search.
    SetDllDirectoryW(mState->libraryFolder.empty() ? nullptr : mState->libraryFolder.c_str());
    if (!mState->folder.empty()) SetCurrentDirectoryW(mState->folder.c_str());
}

}  // namespace zelaudiofilterhost
