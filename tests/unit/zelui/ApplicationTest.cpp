#include <gtest/gtest.h>
#include <QCoreApplication>
#include <QProcess>

#include <zelui/Application.h>

namespace {

struct Outcome {
    int exitCode;
    QString printed;
    QString complained;
};

Outcome RunMode(const QString& mode, const QProcessEnvironment& environment) {
    QProcess process;
    process.setProcessEnvironment(environment);
    process.start(QCoreApplication::applicationFilePath(), {mode});
    EXPECT_TRUE(process.waitForFinished(60000)) << mode.toStdString();
    EXPECT_EQ(process.exitStatus(), QProcess::NormalExit) << mode.toStdString();
    const Outcome outcome{process.exitCode(), process.readAllStandardOutput(), process.readAllStandardError()};
    EXPECT_EQ(outcome.exitCode, 0) << mode.toStdString() << ": line " << outcome.exitCode << "\n"
                                   << outcome.complained.toStdString();
    return outcome;
}

QProcessEnvironment Offscreen() {
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert("QT_QPA_PLATFORM", "offscreen");
    return environment;
}

QProcessEnvironment NothingSet() {
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    for (const char* name : {"QT_QPA_PLATFORM", "DISPLAY", "WAYLAND_DISPLAY"}) environment.remove(name);
    return environment;
}

}  // namespace

TEST(ApplicationTest, WithoutADisplayWindowsAreOffscreen) {
    EXPECT_EQ(RunMode("--report-platform", NothingSet()).printed, "offscreen 0 \n");
}

TEST(ApplicationTest, ADisplayThatCannotBeReachedMeansOffscreenNotTheEnd) {
    QProcessEnvironment environment = NothingSet();
    environment.insert("DISPLAY", ":49151");
    EXPECT_EQ(RunMode("--report-platform", environment).printed, "offscreen 0 \n");
    environment.insert("WAYLAND_DISPLAY", "wayland-there-is-none");
    EXPECT_EQ(RunMode("--report-platform", environment).printed, "offscreen 0 \n");
    environment.remove("DISPLAY");
    EXPECT_EQ(RunMode("--report-platform", environment).printed, "offscreen 0 \n");
}

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
