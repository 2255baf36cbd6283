#include "scan/ScannerProcess.h"

#include <windows.h>

#include <string>

#include <zelaudiofilterhost/ScanProtocol.h>
#include <zelcore/Utf.h>

namespace zelaudiofilterhostui {

namespace {

/// How long DescribeEnd waits: the connection of a dying process closes a moment before the process is over.
constexpr DWORD kEndPatienceMilliseconds = 50;

}  // namespace

void* ScannerProcess::Start(const zelcore::filesupport::File& executable) {
    STARTUPINFOW startup = {};
    startup.cb = sizeof startup;
    PROCESS_INFORMATION process = {};
    wchar_t commandLine[1] = {0};
    const wchar_t* const path = reinterpret_cast<const wchar_t*>(executable.FullPath().c_str());
    if (!CreateProcessW(path, commandLine, nullptr, nullptr, FALSE, CREATE_NO_WINDOW, nullptr, nullptr, &startup,
                        &process))
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
    if (code == zelaudiofilterhost::scanprotocol::kScannerExitHang)
        return zelcore::utility::AsciiToUTF16("did not answer within the time limit while it was scanned");
    if (code == zelaudiofilterhost::scanprotocol::kScannerExitMemory)
        return zelcore::utility::AsciiToUTF16("took more memory than the limit while it was scanned");
    if (code >= 0xC0000000) return zelcore::utility::AsciiToUTF16("crashed while it was scanned");
    return zelcore::utility::AsciiToUTF16("ended the scanner process (exit code " + std::to_string(code) + ")");
}

}  // namespace zelaudiofilterhostui
