#include "DeadlyPlugins.h"

#include <set>

namespace zeltests {

bool IsDeadly(const std::string& name) {
    static const std::set<std::string> kDeadly = {"Allocate3",
                                                  "Crash3",
                                                  "CrashInit3",
                                                  "Exit3",
                                                  "Hang3",
                                                  "abort_when_opened",
                                                  "allocate_when_opened",
                                                  "crash_in_entry",
                                                  "crash_on_load",
                                                  "crash_when_closed",
                                                  "crash_when_described",
                                                  "exit_when_opened",
                                                  "hang_when_opened"};
    return kDeadly.contains(name);
}

}  // namespace zeltests
