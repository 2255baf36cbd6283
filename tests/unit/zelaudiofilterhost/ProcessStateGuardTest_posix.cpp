// What is left of this process after a plug-in that changes everything about it.
#include <cfenv>
#include <clocale>
#include <csignal>
#include <exception>
#include <filesystem>
#include <new>

#include <gtest/gtest.h>

#include "DescribeForTest.h"

using namespace zeltests;

namespace {

void* HandlerOf(int signal) {
    struct sigaction action = {};
    sigaction(signal, nullptr, &action);
    return reinterpret_cast<void*>(action.sa_handler);
}

sigset_t Mask() {
    sigset_t mask;
    pthread_sigmask(SIG_SETMASK, nullptr, &mask);
    return mask;
}

}  // namespace

TEST(ProcessStateGuardTest, ACarelessPluginLeavesNoTrace) {
    const std::filesystem::path folder = std::filesystem::current_path();
    ASSERT_NE(folder, "/");
    const std::string locale = std::setlocale(LC_ALL, nullptr);
    void* const onCrash = HandlerOf(SIGSEGV);
    void* const onPipe = HandlerOf(SIGPIPE);
    const std::terminate_handler onTerminate = std::get_terminate();

    EXPECT_EQ(ReasonOfVst(TestPlugin("vst/good/zel_careless" ZEL_MODULE)), "described");

    EXPECT_EQ(std::filesystem::current_path(), folder);
    EXPECT_EQ(std::setlocale(LC_ALL, nullptr), locale);
    EXPECT_EQ(HandlerOf(SIGSEGV), onCrash);
    EXPECT_EQ(HandlerOf(SIGPIPE), onPipe);
    EXPECT_EQ(std::get_terminate(), onTerminate);
    EXPECT_EQ(std::get_new_handler(), nullptr);
    EXPECT_EQ(std::fegetround(), FE_TONEAREST);
    const sigset_t mask = Mask();
    EXPECT_EQ(sigismember(&mask, SIGTERM), 0);
}
