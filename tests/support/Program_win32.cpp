#include "support/Program.h"

#include <algorithm>
#include <csignal>

#include <gtest/gtest.h>
#include <windows.h>

#include "support/ThrowAwayFolder.h"

namespace zeltests {

namespace {

HANDLE ToHandle(std::intptr_t process) { return reinterpret_cast<HANDLE>(process); }

std::wstring ToWide(const std::string& text) { return ToPath(text).wstring(); }

/// As the system's own way of taking a command line apart wants it.
std::wstring Quote(const std::wstring& argument) {
    std::wstring quoted = L"\"";
    std::size_t backslashes = 0;
    for (const wchar_t unit : argument) {
        if (unit == L'"') quoted.append(backslashes + 1, L'\\');
        backslashes = unit == L'\\' ? backslashes + 1 : 0;
        quoted += unit;
    }
    return quoted.append(backslashes, L'\\') + L"\"";
}

std::wstring MakeCommandLine(const std::vector<std::string>& arguments) {
    std::wstring line;
    for (const std::string& argument : arguments) line += (line.empty() ? L"" : L" ") + Quote(ToWide(argument));
    return line;
}

/// The file of a program.
std::wstring FindProgram(const std::string& name) {
    std::filesystem::path path = ToPath(name);
    if (!std::filesystem::exists(path)) path += L".exe";
    return path.wstring();
}

std::wstring NameOf(const std::wstring& variable) { return variable.substr(0, variable.find(L'=', 1)); }

/// This process's variables and those that are added, which win.
std::wstring MakeEnvironment(const std::vector<std::string>& added) {
    std::vector<std::wstring> all;
    for (const std::string& variable : added) all.push_back(ToWide(variable));
    wchar_t* const block = GetEnvironmentStringsW();
    for (const wchar_t* entry = block; *entry != 0; entry += std::wstring_view(entry).size() + 1) {
        const std::wstring name = NameOf(entry);
        const bool replaced =
            std::any_of(all.begin(), all.end(), [&](const std::wstring& other) { return NameOf(other) == name; });
        if (!replaced) all.push_back(entry);
    }
    FreeEnvironmentStringsW(block);
    std::wstring joined;
    for (const std::wstring& variable : all) joined.append(variable).push_back(0);
    return joined;
}

/// What was printed, with the ends of lines that the test has written.
std::string WithoutReturns(std::string text) {
    for (std::size_t at = text.find("\r\n"); at != std::string::npos; at = text.find("\r\n", at)) text.erase(at, 1);
    return text;
}

HANDLE OpenInheritable(const std::string& path, DWORD access, DWORD disposition) {
    SECURITY_ATTRIBUTES attributes = {sizeof attributes, nullptr, TRUE};
    return CreateFileW(ToWide(path).c_str(), access, FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE,
                       &attributes, disposition, FILE_ATTRIBUTE_NORMAL, nullptr);
}

}  // namespace

const int Program::kKill = 9;

Program::Program(const std::string& outputFolder, const std::vector<std::string>& arguments,
                 const std::vector<std::string>& environment)
    : mProcess(0), mStatus(0), mEnded(false) {
    static int count = 0;
    const std::string name = outputFolder + "/program" + std::to_string(++count);
    mOutputPath = name + ".out";
    mErrorPath = name + ".err";
    STARTUPINFOW startup = {};
    startup.cb = sizeof startup;
    startup.dwFlags = STARTF_USESTDHANDLES;
    startup.hStdInput = OpenInheritable("NUL", GENERIC_READ, OPEN_EXISTING);
    startup.hStdOutput = OpenInheritable(mOutputPath, GENERIC_WRITE, CREATE_ALWAYS);
    startup.hStdError = OpenInheritable(mErrorPath, GENERIC_WRITE, CREATE_ALWAYS);
    PROCESS_INFORMATION process = {};
    std::wstring line = MakeCommandLine(arguments);
    std::wstring variables = MakeEnvironment(environment);
    const BOOL started = CreateProcessW(FindProgram(arguments[0]).c_str(), line.data(), nullptr, nullptr, TRUE,
                                        CREATE_UNICODE_ENVIRONMENT | CREATE_NEW_PROCESS_GROUP, variables.data(),
                                        nullptr, &startup, &process);
    EXPECT_TRUE(started) << arguments[0] << ": " << GetLastError();
    for (const HANDLE handle : {startup.hStdInput, startup.hStdOutput, startup.hStdError, process.hThread}) {
        if (handle != nullptr) CloseHandle(handle);
    }
    mProcess = reinterpret_cast<std::intptr_t>(process.hProcess);
    mEnded = !started;
}

Program::~Program() {
    if (!mEnded) {
        Signal(kKill);
        Wait();
    }
    if (mProcess != 0) CloseHandle(ToHandle(mProcess));
}

void Program::Signal(int number) {
    // A program can be told to end by its console alone; that it was killed is known to none but us.
    if (number == kKill) {
        mStatus = -kKill;
        TerminateProcess(ToHandle(mProcess), static_cast<UINT>(kKill));
    } else {
        EXPECT_TRUE(GenerateConsoleCtrlEvent(CTRL_BREAK_EVENT, GetProcessId(ToHandle(mProcess)))) << GetLastError();
    }
}

int Program::Wait() {
    if (mEnded && mStatus == 0 && mProcess == 0) return -1;
    WaitForSingleObject(ToHandle(mProcess), INFINITE);
    mEnded = true;
    DWORD code = 0;
    GetExitCodeProcess(ToHandle(mProcess), &code);
    return mStatus != 0 && code == static_cast<DWORD>(kKill) ? mStatus : static_cast<int>(code);
}

bool Program::IsRunning() {
    if (!mEnded) mEnded = WaitForSingleObject(ToHandle(mProcess), 0) == WAIT_OBJECT_0;
    return !mEnded;
}

bool Program::CanSignal() { return GetConsoleCP() != 0; }

std::string Program::GetOutput() const { return WithoutReturns(ReadFile(mOutputPath)); }

std::string Program::GetErrors() const { return WithoutReturns(ReadFile(mErrorPath)); }

std::string SettingsIn(const std::string& folder) { return "APPDATA=" + folder; }

}  // namespace zeltests
