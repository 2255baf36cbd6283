#include <filesystem>
#include <memory>
#include <set>

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <QImage>

#include "support/Program.h"
#include "support/ThrowAwayFolder.h"

namespace zeltests {

using testing::HasSubstr;
using testing::Not;

namespace {

/// `tessaly manage`, and the check at its start, as a user calls it without a display.
class TessalyManageTest : public testing::Test {
protected:
    TessalyManageTest() { std::filesystem::create_directories(mFolder.Path("profile/tessaly")); }

    std::unique_ptr<Program> Run(std::vector<std::string> arguments) {
        arguments.insert(arguments.begin(), {std::string(ZEL_BIN_DIR) + "/tessaly"});
        std::unique_ptr<Program> program = std::make_unique<Program>(
            mFolder.GetPath(), arguments,
            std::vector<std::string>{SettingsIn(mFolder.Path("profile")), "HOME=" + mFolder.GetPath(),
                                     "VST3_PATH=" + mFolder.Path("none"), "VST_PATH=" + mFolder.Path("none")});
        program->Wait();
        return program;
    }
    std::string GetPreference(const std::string& name) const { return mFolder.Path("profile/tessaly/" + name); }
    QImage TakePicture(const std::vector<std::string>& options = {}) {
        std::vector<std::string> arguments = {"manage", "--screenshot", mFolder.Path("picture.png")};
        arguments.insert(arguments.end(), options.begin(), options.end());
        const std::unique_ptr<Program> program = Run(arguments);
        EXPECT_EQ(program->Wait(), 0) << program->GetErrors();
        return QImage(QString::fromStdString(mFolder.Path("picture.png")));
    }

    ThrowAwayFolder mFolder;
};

}  // namespace

TEST_F(TessalyManageTest, ShowsTheManagerAndKeepsWhatItRemembers) {
    const QImage picture = TakePicture({"--theme", "light"});
    EXPECT_GE(picture.width(), 737);
    EXPECT_GE(picture.height(), 470);
    EXPECT_GT(picture.pixelColor(1, 1).lightnessF(), 0.8);
    EXPECT_THAT(ReadFile(GetPreference("PluginManagerWindow.ini")), HasSubstr("width="));
}

TEST_F(TessalyManageTest, AWindowFileThatMakesNoSenseIsAsIfThereWereNone) {
    WriteFile(GetPreference("PluginManagerWindow.ini"),
              "[General]\nsortColumn=77\nwidth=nonsense\nheight=99999999999\nrescanExisting=perhaps\nsortAscending=@"
              "Invalid()\n");
    EXPECT_GE(TakePicture().width(), 737);
    EXPECT_THAT(ReadFile(GetPreference("PluginManagerWindow.ini")), HasSubstr("sortColumn=0"));
}

TEST_F(TessalyManageTest, AWindowFileOfMegabytesIsNotRead) {
    WriteFile(GetPreference("PluginManagerWindow.ini"),
              "[General]\nsortColumn=2\n;" + std::string(1 << 20, 'x') + "\n");
    EXPECT_GE(TakePicture().width(), 737);
    EXPECT_THAT(ReadFile(GetPreference("PluginManagerWindow.ini")), HasSubstr("sortColumn=0"));
}

TEST_F(TessalyManageTest, ACatalogueThatCannotBeWrittenIsAFailure) {
    std::filesystem::remove_all(GetPreference(""));
    WriteFile(mFolder.Path("profile/tessaly"), "a file where the folder should be");
    EXPECT_EQ(Run({"manage", "--screenshot", mFolder.Path("picture.png")})->Wait(), 1);
    EXPECT_FALSE(std::filesystem::exists(mFolder.Path("picture.png")));
}

TEST_F(TessalyManageTest, WithoutADisplayItSaysSo) {
    const auto program = Run({"manage"});
    EXPECT_EQ(program->Wait(), 1);
    EXPECT_THAT(program->GetErrors(), HasSubstr("there is no display"));
}

TEST_F(TessalyManageTest, ACrashOfTheLastScanIsToldOnTheErrorStreamAndThePluginBanned) {
    WriteFile(GetPreference("ScannedPluginPath.txt"), "2||/p/crashes.so");
    const auto program = Run({"scan"});
    EXPECT_EQ(program->Wait(), 0) << program->GetErrors();
    EXPECT_THAT(program->GetErrors(), HasSubstr("/p/crashes.so"));
    EXPECT_THAT(program->GetOutput(), HasSubstr("1 banned"));
    EXPECT_FALSE(std::filesystem::exists(GetPreference("ScannedPluginPath.txt")));
    EXPECT_THAT(Run({"scan"})->GetErrors(), Not(HasSubstr("/p/crashes.so")));
}

TEST_F(TessalyManageTest, WhatWasBannedBeforeIsNotToldAgain) {
    WriteFile(GetPreference("ScannedPluginPath.txt"), "2||/p/first.so");
    Run({"scan"});
    WriteFile(GetPreference("ScannedPluginPath.txt"), "2||/p/second.so");
    const auto program = Run({"scan"});
    EXPECT_EQ(program->Wait(), 0) << program->GetErrors();
    EXPECT_THAT(program->GetErrors(), HasSubstr("/p/second.so"));
    EXPECT_THAT(program->GetErrors(), Not(HasSubstr("/p/first.so")));
    EXPECT_THAT(program->GetOutput(), HasSubstr("2 banned"));
}

}  // namespace zeltests
