#include "ResidentMemory.h"

#include <fstream>

#include <gtest/gtest.h>
#include <unistd.h>

namespace zeltests {

std::size_t GetResidentMemory() {
    std::ifstream file("/proc/self/statm");
    std::size_t all = 0;
    std::size_t resident = 0;
    EXPECT_TRUE(file >> all >> resident);
    return resident * static_cast<std::size_t>(sysconf(_SC_PAGESIZE));
}

}  // namespace zeltests
