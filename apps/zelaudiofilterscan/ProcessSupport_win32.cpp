#include "ProcessSupport.h"

#include <windows.h>

#include <psapi.h>
#include <shellapi.h>
#include <tlhelp32.h>

#include <csignal>
#include <cstdio>
#include <cstdlib>

#include <io.h>

#include <zelcore/Utf.h>

namespace zelaudiofilterscan {

namespace {

/// What programs that give themselves up end with.
constexpr DWORD kAborted = 0xC0000409;
constexpr DWORD kMaxPath = 32768;

/// Of this process, as the system's list says; 0 when it does not.
DWORD FindParent() {
    const HANDLE list = CreateToolhelp32Snapshot(TH32CS_SNAPPROCESS, 0);
    if (list == INVALID_HANDLE_VALUE) return 0;
    PROCESSENTRY32W entry = {};
    entry.dwSize = sizeof entry;
    DWORD parent = 0;
    for (BOOL isThere = Process32FirstW(list, &entry); isThere && parent == 0; isThere = Process32NextW(list, &entry)) {
        if (entry.th32ProcessID == GetCurrentProcessId()) parent = entry.th32ParentProcessID;
    }
    CloseHandle(list);
    return parent;
}

ULONGLONG StartTime(HANDLE process) {
    FILETIME start = {};
    FILETIME unused[3] = {};
    GetProcessTimes(process, &start, &unused[0], &unused[1], &unused[2]);
    return (ULONGLONG(start.dwHighDateTime) << 32) | start.dwLowDateTime;
}

/// The process that started this one, held so that its number stays its own.
class Starter {
public:
    Starter() : mId(FindParent()), mProcess(OpenProcess(SYNCHRONIZE | PROCESS_QUERY_LIMITED_INFORMATION, FALSE, mId)) {
        mIsGone = mProcess == nullptr ? GetLastError() != ERROR_ACCESS_DENIED
                                      // The number is another process's by now, which began later than this one.
                                      : StartTime(mProcess) > StartTime(GetCurrentProcess());
    }

    DWORD GetId() const { return mId; }
    bool IsGone() const {
        return mIsGone || (mProcess != nullptr && WaitForSingleObject(mProcess, 0) == WAIT_OBJECT_0);
    }

private:
    const DWORD mId;
    const HANDLE mProcess;  ///< the process's end closes it
    bool mIsGone;
};

const Starter gStarter;

LONG WINAPI EndByException(EXCEPTION_POINTERS* exception) {
    TerminateProcess(GetCurrentProcess(), exception->ExceptionRecord->ExceptionCode);
    return EXCEPTION_EXECUTE_HANDLER;
}

void EndByAbort(int) { TerminateProcess(GetCurrentProcess(), kAborted); }

/// A plug-in that goes down takes the process along, and nobody is asked about it.
void DieQuietly() {
    SetErrorMode(SEM_FAILCRITICALERRORS | SEM_NOGPFAULTERRORBOX | SEM_NOOPENFILEERRORBOX);
    SetUnhandledExceptionFilter(EndByException);
    std::signal(SIGABRT, EndByAbort);
}

std::wstring GetLogPath() {
    std::wstring path(kMaxPath, L'\0');
    const DWORD length = GetEnvironmentVariableW(L"ZEL_SCANNER_LOG", path.data(), kMaxPath);
    path.resize(length < kMaxPath ? length : 0);
    return path;
}

/// Those that ask the system for a standard stream get what the runtime has for it.
void TellSystem(DWORD standardHandle, std::FILE* stream) {
    SetStdHandle(standardHandle, reinterpret_cast<HANDLE>(_get_osfhandle(_fileno(stream))));
}

/// Leads a standard stream to a file, or nowhere when there is none or it cannot be opened.
void Redirect(std::FILE* stream, DWORD standardHandle, const std::wstring& path, const wchar_t* mode) {
    const bool isOpen = !path.empty() && _wfreopen(path.c_str(), mode, stream) != nullptr;
    if (!isOpen) _wfreopen(L"NUL", mode, stream);
    TellSystem(standardHandle, stream);
}

}  // namespace

std::vector<std::string> ProcessSupport::GetArguments(int, char**) {
    std::vector<std::string> arguments;
    int count = 0;
    // The ones that main gets are in a code page that most names cannot be written in.
    wchar_t** const texts = CommandLineToArgvW(GetCommandLineW(), &count);
    for (int i = 1; texts != nullptr && i < count; ++i) {
        const std::wstring text = texts[i];
        const zelcore::utf8string bytes = zelcore::utility::UTF16to8(zelcore::ustring(text.begin(), text.end()));
        arguments.emplace_back(bytes.data(), bytes.size());
    }
    LocalFree(texts);
    return arguments;
}

void ProcessSupport::PrepareServer() {
    DieQuietly();
    const std::wstring log = GetLogPath();
    Redirect(stdin, STD_INPUT_HANDLE, L"", L"rb");
    Redirect(stdout, STD_OUTPUT_HANDLE, log, L"ab");
    Redirect(stderr, STD_ERROR_HANDLE, log, L"ab");
}

int ProcessSupport::PrepareManual() {
    DieQuietly();
    SetConsoleOutputCP(CP_UTF8);
    const int output = _dup(1);
    if (_dup2(2, 1) == 0) TellSystem(STD_OUTPUT_HANDLE, stdout);
    return output;
}

void ProcessSupport::Write(int descriptor, const std::string& text) {
    // Past the runtime, which would change the ends of the lines.
    const HANDLE output = reinterpret_cast<HANDLE>(_get_osfhandle(descriptor));
    std::size_t written = 0;
    while (written < text.size()) {
        DWORD count = 0;
        if (!WriteFile(output, text.data() + written, static_cast<DWORD>(text.size() - written), &count, nullptr))
            return;
        written += count;
    }
}

unsigned long ProcessSupport::GetStarter() { return gStarter.GetId(); }

bool ProcessSupport::IsOrphaned() { return gStarter.IsGone(); }

std::size_t ProcessSupport::GetResidentMegabytes() {
    PROCESS_MEMORY_COUNTERS memory = {};
    memory.cb = sizeof memory;
    return GetProcessMemoryInfo(GetCurrentProcess(), &memory, sizeof memory) ? memory.WorkingSetSize / (1024 * 1024)
                                                                             : 0;
}

void ProcessSupport::EndNow(int exitCode) {
    TerminateProcess(GetCurrentProcess(), static_cast<UINT>(exitCode));
    std::abort();
}

}  // namespace zelaudiofilterscan
