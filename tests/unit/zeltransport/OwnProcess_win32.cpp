#include "OwnProcess.h"

#include <cstddef>

#include <gtest/gtest.h>
#include <windows.h>

namespace zeltests {

unsigned long GetOwnProcessId() { return GetCurrentProcessId(); }

// The system's own count of it is not there under wine.
long GetDataKilobytes() {
    std::size_t bytes = 0;
    MEMORY_BASIC_INFORMATION region;
    for (char* at = nullptr; VirtualQuery(at, &region, sizeof region) == sizeof region;
         at = static_cast<char*>(region.BaseAddress) + region.RegionSize) {
        if (region.State == MEM_COMMIT && region.Type == MEM_PRIVATE) bytes += region.RegionSize;
    }
    EXPECT_GT(bytes, 0u);
    return static_cast<long>(bytes / 1024);
}

}  // namespace zeltests
