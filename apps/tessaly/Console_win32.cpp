#include "Console.h"

#include <cstdio>
#include <iostream>
#include <memory>

#include <windows.h>

#include <shellapi.h>

#include "FilePath.h"

namespace tessaly {

namespace {

bool IsConsole(DWORD stream) {
    DWORD mode = 0;
    return GetConsoleMode(GetStdHandle(stream), &mode) != 0;
}

bool IsAloneAtConsole() {
    DWORD processes[2] = {};
    return GetConsoleProcessList(processes, 2) == 1;
}

}  // namespace

Console::Console() : mOldEncoding(GetConsoleOutputCP()) { SetConsoleOutputCP(CP_UTF8); }

Console::~Console() {
    std::cout.flush();
    std::cerr.flush();
    if (mOldEncoding != 0) SetConsoleOutputCP(mOldEncoding);
}

std::vector<std::string> Console::GetArguments(int, const char* const*) {
    // Those of main() have lost every character that the system's narrow encoding does not have.
    int count = 0;
    const std::unique_ptr<wchar_t*, decltype(&LocalFree)> all(CommandLineToArgvW(GetCommandLineW(), &count),
                                                              &LocalFree);
    std::vector<std::string> arguments;
    for (int i = 1; all && i < count; ++i) arguments.push_back(FromFilePath(all.get()[i]));
    return arguments;
}

void Console::CloseOwn() {
    if (!IsAloneAtConsole()) return;
    const bool hasOutput = !IsConsole(STD_OUTPUT_HANDLE);
    const bool hasErrors = !IsConsole(STD_ERROR_HANDLE);
    FreeConsole();
    // What is still written goes nowhere rather than wrong.
    if (!hasOutput) std::freopen("NUL", "w", stdout);
    if (!hasErrors) std::freopen("NUL", "w", stderr);
}

}  // namespace tessaly
