#include <fcntl.h>
#include <gtest/gtest.h>
#include <spawn.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include "PeakMemory.h"

extern char** environ;

namespace zeltests {

namespace {

std::vector<char*> ToPointers(const std::vector<std::string>& texts) {
    std::vector<char*> pointers;
    pointers.reserve(texts.size() + 1);
    for (const std::string& text : texts) pointers.push_back(const_cast<char*>(text.c_str()));
    pointers.push_back(nullptr);
    return pointers;
}

}  // namespace

long RunAndMeasurePeak(const std::vector<std::string>& arguments, const std::vector<std::string>& environment) {
    std::vector<std::string> all = environment;
    for (char** variable = environ; *variable; ++variable) all.push_back(*variable);
    pid_t process = 0;
    posix_spawn_file_actions_t actions;
    posix_spawn_file_actions_init(&actions);
    posix_spawn_file_actions_addopen(&actions, STDOUT_FILENO, "/dev/null", O_WRONLY, 0);
    const int failed = posix_spawn(&process, arguments[0].c_str(), &actions, nullptr, ToPointers(arguments).data(),
                                   ToPointers(all).data());
    posix_spawn_file_actions_destroy(&actions);
    EXPECT_EQ(failed, 0) << arguments[0];
    if (failed != 0) return 0;
    int status = 0;
    rusage usage = {};
    EXPECT_EQ(wait4(process, &status, 0, &usage), process);
    EXPECT_EQ(status, 0);
    return usage.ru_maxrss;
}

}  // namespace zeltests
