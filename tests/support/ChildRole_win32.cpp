#include "ChildRole_win32.h"

#include <cstdlib>

#include <gtest/gtest.h>
#include <windows.h>

#include "Environment.h"

namespace zeltests {

namespace {

const char* const kRoleVariable = "ZEL_TEST_ROLE";
const char* const kArgumentVariable = "ZEL_TEST_ROLE_ARGUMENT";

std::string ReadVariable(const char* name) {
    const char* const value = std::getenv(name);
    return value != nullptr ? value : "";
}

}  // namespace

ChildRole::ChildRole(const std::string& name, const std::function<void(const std::string&)>& act) : mName(name) {
    if (ReadVariable(kRoleVariable) != name) return;
    act(ReadVariable(kArgumentVariable));
    TerminateProcess(GetCurrentProcess(), 0);
}

ChildRole::Process ChildRole::Start(const std::string& argument, bool inherits) const {
    wchar_t program[4096];
    EXPECT_GT(GetModuleFileNameW(nullptr, program, 4096), 0u);
    SetVariable(kRoleVariable, mName.c_str());
    SetVariable(kArgumentVariable, argument.c_str());
    STARTUPINFOW startup = {};
    startup.cb = sizeof startup;
    PROCESS_INFORMATION process = {};
    EXPECT_TRUE(CreateProcessW(program, nullptr, nullptr, nullptr, inherits, CREATE_NO_WINDOW, nullptr, nullptr,
                               &startup, &process))
        << GetLastError();
    SetVariable(kRoleVariable, nullptr);
    SetVariable(kArgumentVariable, nullptr);
    CloseHandle(process.hThread);
    return Process(process.hProcess);
}

ChildRole::Process::~Process() {
    TerminateProcess(mHandle, 1);
    WaitForSingleObject(mHandle, INFINITE);
    CloseHandle(mHandle);
}

unsigned long ChildRole::Process::GetId() const { return GetProcessId(mHandle); }

}  // namespace zeltests
