#include "scan/ScannerProcess.h"

#include <windows.h>

#include <string>

#include <zelaudiofilterhost/ScanProtocol.h>
#include <zelcore/Utf.h>

namespace zelaudiofilterhostui {

namespace {

namespace protocol = zelaudiofilterhost::scanprotocol;

/// How long DescribeEnd waits: the connection of a dying process closes a moment before the process is over.
constexpr DWORD kEndPatienceMilliseconds = 50;

/// Exit codes from here on are those of exceptions that nobody caught.
constexpr DWORD kFirstCrash = 0xC0000000;
/// What the runtime of our compiler throws with, in the system's terms.
constexpr DWORD kUncaughtException = 0x20474343;
/// The same of the one that most plug-ins are built with.
constexpr DWORD kOtherUncaughtException = 0xE06D7363;
constexpr DWORD kDamagedHeap = 0xC0000374;
/// What programs that give themselves up end with.
constexpr DWORD kAborted = 0xC0000409;

struct CrashName {
    DWORD code;
    const char* name;
};

constexpr CrashName kCrashNames[] = {{DWORD(EXCEPTION_ACCESS_VIOLATION), "Access violation"},
                                     {DWORD(EXCEPTION_STACK_OVERFLOW), "Stack overflow"},
                                     {DWORD(EXCEPTION_ILLEGAL_INSTRUCTION), "Illegal instruction"},
                                     {DWORD(EXCEPTION_PRIV_INSTRUCTION), "Illegal instruction"},
                                     {DWORD(EXCEPTION_INT_DIVIDE_BY_ZERO), "Division by zero"},
                                     {DWORD(EXCEPTION_IN_PAGE_ERROR), "Page that could not be read"},
                                     {kDamagedHeap, "Damaged heap"},
                                     {kAborted, "Aborted"},
                                     {kUncaughtException, "Exception that nobody caught"},
                                     {kOtherUncaughtException, "Exception that nobody caught"}};

std::string DescribeExit(DWORD code) {
    if (code == protocol::kScannerExitHang) return "did not answer within the time limit while it was scanned";
    if (code == protocol::kScannerExitMemory) return "took more memory than the limit while it was scanned";
    for (const CrashName& crash : kCrashNames) {
        if (crash.code == code) return std::string("crashed while it was scanned: ") + crash.name;
    }
    if (code >= kFirstCrash) return "crashed while it was scanned: exception " + std::to_string(code);
    return "ended the scanner process (exit code " + std::to_string(code) + ")";
}

}  // namespace

void* ScannerProcess::Start(const zelcore::filesupport::File& executable) {
    const std::wstring path(executable.FullPath().begin(), executable.FullPath().end());
    // The system writes into it.
    wchar_t commandLine[1] = {0};
    STARTUPINFOW startup = {};
    startup.cb = sizeof startup;
    // The handle of the thread is neither used nor closed.
    PROCESS_INFORMATION process = {};
    if (!CreateProcessW(path.c_str(), commandLine, nullptr, nullptr, FALSE, CREATE_NO_WINDOW, nullptr, nullptr,
                        &startup, &process))
        return nullptr;
    return process.hProcess;
}

void ScannerProcess::Abandon(void*) {
    // The handle of a dead scanner is left open on purpose: there are few of them, and they end with the application.
}

void ScannerProcess::Terminate(void* process) {
    TerminateProcess(process, 0);
    CloseHandle(process);
}

unsigned long ScannerProcess::GetId(void* process) { return GetProcessId(process); }

bool ScannerProcess::IsRunning(void* process) { return process && WaitForSingleObject(process, 0) == WAIT_TIMEOUT; }

zelcore::ustring ScannerProcess::DescribeEnd(void* process) {
    DWORD code = 0;
    if (!process || WaitForSingleObject(process, kEndPatienceMilliseconds) != WAIT_OBJECT_0 ||
        !GetExitCodeProcess(process, &code))
        return zelcore::ustring();
    return zelcore::utility::AsciiToUTF16(DescribeExit(code));
}

}  // namespace zelaudiofilterhostui
