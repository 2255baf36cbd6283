#include <windows.h>

#include <set>

#include "DeadlyPlugins.h"

namespace zeltests {

namespace {

/// Gives functions that are nowhere a place, and ends whoever calls them; the system does not load such a module.
bool IsWine() { return GetProcAddress(GetModuleHandleW(L"ntdll.dll"), "wine_get_version") != nullptr; }

}  // namespace

// A crash while a module is being loaded is an error of loading.
bool IsDeadly(const std::string& name) {
    static const std::set<std::string> kDeadly = {"Allocate3",
                                                  "Crash3",
                                                  "CrashInit3",
                                                  "Exit3",
                                                  "Hang3",
                                                  "abort_when_opened",
                                                  "allocate_when_opened",
                                                  "crash_in_entry",
                                                  "crash_when_closed",
                                                  "crash_when_described",
                                                  "exit_when_opened",
                                                  "hang_when_opened"};
    return kDeadly.contains(name) || (name == "missing_function" && IsWine());
}

}  // namespace zeltests
