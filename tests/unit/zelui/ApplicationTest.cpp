#include <gtest/gtest.h>
#include <zelui/Application.h>

#include "ApplicationProcess.h"

using zeltests::NothingSet;
using zeltests::Offscreen;
using zeltests::RunMode;

TEST(ApplicationTest, ThePlatformOfTheEnvironmentIsKept) {
    QProcessEnvironment environment = NothingSet();
    environment.insert("QT_QPA_PLATFORM", "minimal");
    environment.insert("DISPLAY", ":49151");
    EXPECT_EQ(RunMode("--report-platform", environment).printed, "minimal 0 minimal\n");
}

TEST(ApplicationTest, QuitEndsRunWithItsCodeAndCancelsTheModalDialog) { RunMode("--run-until-quit", Offscreen()); }

TEST(ApplicationTest, AHostsOwnQApplicationRunsEverythingAndStays) { RunMode("--host-owns-qt", Offscreen()); }

TEST(ApplicationTest, TheEndClosesDialogsSilentlyAndDropsPostedCalls) {
    RunMode("--end-with-dialogs-and-calls", Offscreen());
}

TEST(ApplicationTest, ThereIsOneAtATimeAndNoneOverAConsoleApplication) { RunMode("--refuse-second", Offscreen()); }

TEST(ApplicationTest, NothingToCancelWithoutADialog) { EXPECT_FALSE(zelui::Application::CancelActiveDialog()); }
