#include "support/CarelessProcess.h"

#include <windows.h>

#include <clocale>
#include <csignal>
#include <exception>
#include <new>

#include <cfenv>

namespace zeltestplugins {

namespace {

void Ignore(int) {}
[[noreturn]] void Terminate() {
    TerminateProcess(GetCurrentProcess(), 99);
    for (;;) {
    }
}
void OutOfMemory() { throw std::bad_alloc(); }
LONG WINAPI CallItHandled(EXCEPTION_POINTERS*) { return EXCEPTION_EXECUTE_HANDLER; }

}  // namespace

void ChangeEverything() {
    SetCurrentDirectoryW(L"C:\\");
    SetDllDirectoryW(L"C:\\");
    setlocale(LC_ALL, "English");
    signal(SIGSEGV, Ignore);
    signal(SIGABRT, Ignore);
    SetUnhandledExceptionFilter(CallItHandled);
    SetErrorMode(SEM_NOALIGNMENTFAULTEXCEPT | SEM_NOGPFAULTERRORBOX);
    std::fesetround(FE_TOWARDZERO);
    std::set_terminate(Terminate);
    std::set_new_handler(OutOfMemory);
}

}  // namespace zeltestplugins
