#include "OwnProcess.h"

#include <windows.h>

#include <tlhelp32.h>

#include <cstdlib>

namespace zeltests::scripted {

namespace {

HANDLE OpenStarter() {
    const HANDLE list = CreateToolhelp32Snapshot(TH32CS_SNAPPROCESS, 0);
    PROCESSENTRY32W entry = {};
    entry.dwSize = sizeof entry;
    DWORD starter = 0;
    for (BOOL isThere = Process32FirstW(list, &entry); isThere && starter == 0;
         isThere = Process32NextW(list, &entry)) {
        if (entry.th32ProcessID == GetCurrentProcessId()) starter = entry.th32ParentProcessID;
    }
    CloseHandle(list);
    return OpenProcess(SYNCHRONIZE, FALSE, starter);
}

const HANDLE gStarter = OpenStarter();

LONG WINAPI EndByException(EXCEPTION_POINTERS* exception) {
    TerminateProcess(GetCurrentProcess(), exception->ExceptionRecord->ExceptionCode);
    return EXCEPTION_EXECUTE_HANDLER;
}

}  // namespace

const bool kAsksForLingeringPort = false;

unsigned long GetOwnId() { return GetCurrentProcessId(); }

bool IsStarterGone() { return gStarter == nullptr || WaitForSingleObject(gStarter, 0) == WAIT_OBJECT_0; }

void Crash() {
    SetUnhandledExceptionFilter(EndByException);
    RaiseException(DWORD(EXCEPTION_ACCESS_VIOLATION), EXCEPTION_NONCONTINUABLE, 0, nullptr);
    std::abort();
}

void EndNow(int code) {
    TerminateProcess(GetCurrentProcess(), static_cast<UINT>(code));
    std::abort();
}

}  // namespace zeltests::scripted
