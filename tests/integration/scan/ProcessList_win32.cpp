#include "ProcessList.h"

#include <windows.h>

#include <tlhelp32.h>

#include <string>
#include <vector>

#include "support/WaitFor.h"

namespace zeltests {

namespace {

std::vector<PROCESSENTRY32W> FindScanners() {
    std::vector<PROCESSENTRY32W> found;
    const HANDLE list = CreateToolhelp32Snapshot(TH32CS_SNAPPROCESS, 0);
    PROCESSENTRY32W entry = {};
    entry.dwSize = sizeof entry;
    for (BOOL isThere = Process32FirstW(list, &entry); isThere; isThere = Process32NextW(list, &entry)) {
        // Processes that have ended have no threads any more, but stay in the list while somebody has their handle.
        if (entry.szExeFile == std::wstring(L"zelaudiofilterscan.exe") && entry.cntThreads > 0) found.push_back(entry);
    }
    CloseHandle(list);
    return found;
}

}  // namespace

std::size_t ProcessList::CountScanners() { return FindScanners().size(); }

void ProcessList::WaitForScanners() {
    // One whose client was gone before it had said a word waits for another one for a while.
    WaitFor([] { return CountScanners() == 0; }, std::chrono::seconds(40));
}

void ProcessList::EndScanners() {
    for (const PROCESSENTRY32W& entry : FindScanners()) {
        if (entry.th32ParentProcessID != GetCurrentProcessId()) continue;
        const HANDLE process = OpenProcess(PROCESS_TERMINATE | SYNCHRONIZE, FALSE, entry.th32ProcessID);
        TerminateProcess(process, 0);
        WaitForSingleObject(process, INFINITE);
        CloseHandle(process);
    }
}

const char* ProcessList::GetCrashName() { return "Access violation"; }

}  // namespace zeltests
