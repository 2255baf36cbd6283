// What is left of this process after a plug-in that changes everything about it.
#include <windows.h>

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

void Handle(int) {}
LONG WINAPI Filter(EXCEPTION_POINTERS*) { return EXCEPTION_CONTINUE_SEARCH; }

std::wstring LibraryFolder() {
    wchar_t folder[MAX_PATH] = {};
    GetDllDirectoryW(MAX_PATH, folder);
    return folder;
}

}  // namespace

TEST(ProcessStateGuardTest, ACarelessPluginLeavesNoTrace) {
    const std::filesystem::path folder = std::filesystem::current_path();
    ASSERT_NE(folder, "C:\\");
    const std::string locale = std::setlocale(LC_ALL, nullptr);
    const std::terminate_handler onTerminate = std::get_terminate();
    const UINT errorMode = GetErrorMode();
    const std::wstring libraryFolder = LibraryFolder();
    const auto oldHandler = std::signal(SIGABRT, Handle);
    const auto oldFilter = SetUnhandledExceptionFilter(Filter);

    EXPECT_EQ(ReasonOfVst(TestPlugin("vst/good/zel_careless" ZEL_MODULE)), "described");

    EXPECT_EQ(std::filesystem::current_path(), folder);
    EXPECT_EQ(std::setlocale(LC_ALL, nullptr), locale);
    EXPECT_EQ(std::signal(SIGABRT, oldHandler), Handle);
    EXPECT_EQ(std::signal(SIGSEGV, SIG_DFL), SIG_DFL);
    EXPECT_EQ(SetUnhandledExceptionFilter(oldFilter), Filter);
    EXPECT_EQ(GetErrorMode(), errorMode);
    EXPECT_EQ(LibraryFolder(), libraryFolder);
    EXPECT_EQ(std::get_terminate(), onTerminate);
    EXPECT_EQ(std::get_new_handler(), nullptr);
    EXPECT_EQ(std::fegetround(), FE_TONEAREST);
}
