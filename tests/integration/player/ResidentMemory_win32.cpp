#include "ResidentMemory.h"

#include <gtest/gtest.h>
#include <windows.h>

#include <psapi.h>

namespace zeltests {

std::size_t GetResidentMemory() {
    PROCESS_MEMORY_COUNTERS counters = {};
    EXPECT_TRUE(K32GetProcessMemoryInfo(GetCurrentProcess(), &counters, sizeof counters));
    return counters.WorkingSetSize;
}

}  // namespace zeltests
