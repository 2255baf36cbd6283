#include "ChildRun.h"

#include <windows.h>

#include <psapi.h>
#include <tlhelp32.h>

#include <csignal>
#include <filesystem>

#include "DescribeForTest.h"
#include "support/ChildRole_win32.h"

namespace zeltests {

// The system catches it and says that the module cannot be loaded.
const char* const ChildRun::kCrashedLoading = "code 43";

namespace {

constexpr DWORD kAborted = 0xC0000409;
constexpr DWORD kFirstCrash = 0xC0000000;
/// Two looks at the child's use of the processor are this far apart, in milliseconds.
constexpr DWORD kLook = 50;

LONG WINAPI EndByException(EXCEPTION_POINTERS* exception) {
    TerminateProcess(GetCurrentProcess(), exception->ExceptionRecord->ExceptionCode);
    return EXCEPTION_EXECUTE_HANDLER;
}

void EndByAbort(int) { TerminateProcess(GetCurrentProcess(), kAborted); }

const ChildRole gRole("describe", [](const std::string& plugin) {
    // The system would ask people about a crash.
    SetUnhandledExceptionFilter(EndByException);
    std::signal(SIGABRT, EndByAbort);
    const int code = IsDescribed(plugin) ? ChildRun::kDescribed : ChildRun::kRefused;
    TerminateProcess(GetCurrentProcess(), static_cast<UINT>(code));
});

ChildRole::Process* ToProcess(std::intptr_t process) { return reinterpret_cast<ChildRole::Process*>(process); }

HANDLE ToHandle(std::intptr_t process) { return ToProcess(process)->Get(); }

ULONGLONG TimeUsed(HANDLE process) {
    FILETIME unused[2] = {};
    FILETIME used[2] = {};
    GetProcessTimes(process, &unused[0], &unused[1], &used[0], &used[1]);
    const auto whole = [](const FILETIME& time) { return (ULONGLONG(time.dwHighDateTime) << 32) | time.dwLowDateTime; };
    return whole(used[0]) + whole(used[1]);
}

bool HasModule(HANDLE process, const std::string& plugin) {
    const std::wstring name = std::filesystem::path(plugin).stem().wstring();
    const HANDLE list = CreateToolhelp32Snapshot(TH32CS_SNAPMODULE, GetProcessId(process));
    if (list == INVALID_HANDLE_VALUE) return false;
    MODULEENTRY32W entry = {};
    entry.dwSize = sizeof entry;
    bool isFound = false;
    for (BOOL isThere = Module32FirstW(list, &entry); isThere && !isFound; isThere = Module32NextW(list, &entry)) {
        isFound = std::filesystem::path(entry.szModule).stem().wstring() == name;
    }
    CloseHandle(list);
    return isFound;
}

}  // namespace

ChildRun::ChildRun(const std::string& plugin)
    : mPlugin(plugin),
      mProcess(reinterpret_cast<std::intptr_t>(new ChildRole::Process(gRole.Start(plugin)))),
      mState("runs") {}

ChildRun::~ChildRun() { delete ToProcess(mProcess); }

std::string ChildRun::GetState() {
    DWORD code = 0;
    if (mState != "runs" || WaitForSingleObject(ToHandle(mProcess), 0) != WAIT_OBJECT_0 ||
        !GetExitCodeProcess(ToHandle(mProcess), &code))
        return mState;
    mState = code >= kFirstCrash ? "crashed" : "code " + std::to_string(code);
    return mState;
}

std::size_t ChildRun::GetResidentSize() const {
    PROCESS_MEMORY_COUNTERS memory = {};
    memory.cb = sizeof memory;
    return GetProcessMemoryInfo(ToHandle(mProcess), &memory, sizeof memory) ? memory.WorkingSetSize : 0;
}

bool ChildRun::IsAsleep() const {
    if (!HasModule(ToHandle(mProcess), mPlugin)) return false;
    const ULONGLONG before = TimeUsed(ToHandle(mProcess));
    Sleep(kLook);
    return TimeUsed(ToHandle(mProcess)) == before;
}

}  // namespace zeltests
