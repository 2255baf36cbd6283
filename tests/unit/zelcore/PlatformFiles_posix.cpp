#include "PlatformFiles.h"

#include <cerrno>
#include <system_error>

#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

namespace zeltests {

const int kNoSuchFile = ENOENT;
const int kNoSuchFolder = ENOENT;
const int kIsAFolder = EISDIR;
const int kInvalidPath = EINVAL;
const int kFileTooLarge = EFBIG;
const int kDiskFull = ENOSPC;
const int kNoPermission = EACCES;
const int kDeviceBroken = EIO;
const char* const kSettingsVariable = "XDG_CONFIG_HOME";

std::string GetSystemText(int error) { return std::generic_category().message(error); }

bool MakeLink(const std::string& target, const std::string& path) {
    EXPECT_EQ(::symlink(target.c_str(), path.c_str()), 0);
    return true;
}

bool IsForThisUserOnly(const std::string& folder) {
    struct stat status;
    EXPECT_EQ(::stat(folder.c_str(), &status), 0) << folder;
    return (status.st_mode & 0077) == 0;
}

std::string GetProgramFolder() {
    char program[4096];
    const ssize_t length = ::readlink("/proc/self/exe", program, sizeof(program));
    EXPECT_GT(length, 0);
    const std::string path(program, static_cast<std::size_t>(length));
    return path.substr(0, path.rfind('/'));
}

}  // namespace zeltests
