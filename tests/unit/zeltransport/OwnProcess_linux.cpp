#include "OwnProcess.h"

#include <fstream>
#include <string>

#include <gtest/gtest.h>
#include <unistd.h>

namespace zeltests {

unsigned long GetOwnProcessId() { return static_cast<unsigned long>(::getpid()); }

long GetDataKilobytes() {
    std::ifstream status("/proc/self/status");
    std::string word;
    long kilobytes = 0;
    while (status >> word) {
        if (word == "VmData:") status >> kilobytes;
    }
    EXPECT_GT(kilobytes, 0);
    return kilobytes;
}

}  // namespace zeltests
