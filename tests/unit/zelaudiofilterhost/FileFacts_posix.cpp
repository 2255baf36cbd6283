#include "FileFacts.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/stat.h>

namespace zeltests {

std::uint64_t GetFileNumber(const std::string& path) {
    struct stat status = {};
    EXPECT_EQ(::stat(path.c_str(), &status), 0);
    return status.st_ino;
}

void SetChangeTime(const std::string& path, std::int64_t milliseconds) {
    timespec times[2] = {};
    times[0].tv_sec = times[1].tv_sec = milliseconds / 1000;
    times[0].tv_nsec = times[1].tv_nsec = (milliseconds % 1000) * 1000000;
    ASSERT_EQ(::utimensat(AT_FDCWD, path.c_str(), times, 0), 0);
}

}  // namespace zeltests
