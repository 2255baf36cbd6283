#include <csignal>
#include <filesystem>
#include <set>

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <QImage>

#include "../../render/Sound.h"
#include "RunMarker.h"
#include "support/InstalledPlugins.h"
#include "support/Program.h"
#include "support/ThrowAwayFolder.h"
#include "support/WaitFor.h"
#include <zelcore/Dir.h>
#include <zelcore/Utf.h>

namespace zeltests {

using tessaly::RunMarker;
using testing::HasSubstr;
using testing::IsEmpty;

/// `tessaly` as a user starts it, with a profile of its own.
class TessalyWindowTest : public testing::Test {
protected:
    TessalyWindowTest() {
        std::filesystem::create_directories(GetProfile());
        zelcore::filesupport::Dir::SetPrefDir(zelcore::filesupport::Dir(zelcore::utility::UTF8to16(GetProfile())));
        WriteSound(mFolder.Path("sound.wav"), MakeTestSound(2, 48000));
    }
    ~TessalyWindowTest() override { zelcore::filesupport::Dir::SetPrefDir(zelcore::filesupport::Dir()); }

    std::string GetProfile() const { return mFolder.Path("config/tessaly"); }
    std::unique_ptr<Program> Start(std::vector<std::string> arguments) {
        arguments.insert(arguments.begin(), std::string(ZEL_BIN_DIR) + "/tessaly");
        std::vector<std::string> variables = GetPluginVariables(ZEL_TESTPLUGINS_DIR);
        variables.insert(variables.end(),
                         {SettingsIn(mFolder.Path("config")), "PULSE_SERVER=unix:" + mFolder.Path("no-server"),
                          "HOME=" + mFolder.GetPath()});
        return std::make_unique<Program>(mFolder.GetPath(), arguments, variables);
    }
    bool HasMark() const {
        for (const auto& entry : std::filesystem::directory_iterator(GetProfile())) {
            if (entry.path().extension() == ".run") return true;
        }
        return false;
    }

    ThrowAwayFolder mFolder;
};

TEST_F(TessalyWindowTest, EndsWhenItIsAskedToAndLeavesNoMark) {
    if (!Program::CanSignal()) GTEST_SKIP() << "there is no console here";
    const std::unique_ptr<Program> program = Start({});
    ASSERT_TRUE(WaitFor([this] { return HasMark(); })) << program->GetErrors();
    EXPECT_THAT(RunMarker::TakeLostRuns(), IsEmpty());
    program->Signal(SIGTERM);
    EXPECT_EQ(program->Wait(), 0) << program->GetErrors();
    EXPECT_FALSE(HasMark());
}

TEST_F(TessalyWindowTest, EndsWhenItIsAskedToWhileItTellsWhatIsWrongWithAFile) {
    if (!Program::CanSignal()) GTEST_SKIP() << "there is no console here";
    WriteFile(mFolder.Path("bad.tessaly"), "{]");
    const std::unique_ptr<Program> program = Start({mFolder.Path("bad.tessaly")});
    ASSERT_TRUE(WaitFor([this] { return HasMark(); })) << program->GetErrors();
    program->Signal(SIGTERM);
    EXPECT_EQ(program->Wait(), 0) << program->GetErrors();
    EXPECT_FALSE(HasMark());
}

TEST_F(TessalyWindowTest, OneThatIsKilledIsALostRunForTheNextStart) {
    const std::unique_ptr<Program> program = Start({});
    ASSERT_TRUE(WaitFor([this] { return HasMark(); })) << program->GetErrors();
    program->Signal(zeltests::Program::kKill);
    EXPECT_EQ(program->Wait(), -zeltests::Program::kKill);
    EXPECT_EQ(RunMarker::TakeLostRuns().size(), 1u);
    EXPECT_THAT(RunMarker::TakeLostRuns(), IsEmpty());
}

TEST_F(TessalyWindowTest, AWordThatIsNeitherCommandNorFileIsSaid) {
    const std::unique_ptr<Program> program = Start({"rendre"});
    EXPECT_EQ(program->Wait(), 2);
    EXPECT_THAT(program->GetErrors(), HasSubstr("no such command and no such file: 'rendre'"));
}

TEST_F(TessalyWindowTest, ATourWhoseDialogCannotBePicturedSaysSoAndFails) {
    const std::string out = mFolder.Path("out");
    // Where the first picture would be.
    std::filesystem::create_directories(out + "/01-scan.png");
    const std::unique_ptr<Program> program = Start({"tour", "--out", out});
    EXPECT_EQ(program->Wait(), 1) << program->GetOutput();
    EXPECT_THAT(program->GetErrors(), HasSubstr("the picture could not be written: " + out + "/01-scan.png"));
}

TEST_F(TessalyWindowTest, TheTourLeavesPicturesOfEveryWindowAndARenderedFile) {
    if (FindInstalledPlugins().empty() && GetPluginVariables(ZEL_TESTPLUGINS_DIR).empty())
        GTEST_SKIP() << "no plug-in is installed that could be shown";
    const std::string out = mFolder.Path("out");
    const std::unique_ptr<Program> program = Start({"tour", "--out", out});
    ASSERT_EQ(program->Wait(), 0) << program->GetErrors();
    EXPECT_THAT(program->GetOutput(), HasSubstr("rendered.wav and tour.tessaly are in"));
    std::set<std::string> names;
    for (const auto& entry : std::filesystem::directory_iterator(out)) {
        const std::string name = entry.path().filename().string();
        if (entry.path().extension() != ".png") continue;
        names.insert(name.substr(3));
        const QImage picture(QString::fromStdU16String(entry.path().u16string()));
        std::set<QRgb> colours;
        for (int x = 0; x < picture.width(); x += 3) {
            for (int y = 0; y < picture.height(); y += 3) colours.insert(picture.pixel(x, y));
        }
        // Editors of test plug-ins have one or two.
        const bool isPlain =
            !GetPluginVariables(ZEL_TESTPLUGINS_DIR).empty() && name.find("editor-") != std::string::npos;
        EXPECT_GT(colours.size(), isPlain ? 0u : 8u) << name;
    }
    EXPECT_EQ(names, std::set<std::string>({"scan.png", "plug-in-manager.png", "window.png", "effect-menu.png",
                                            "editor-1.png", "editor-2.png", "editor-3.png", "parameters.png",
                                            "channel-map.png", "playing.png", "window-dark.png"}));
    const Sound rendered = ReadSound(out + "/rendered.wav");
    EXPECT_EQ(rendered.GetFrameCount(), 10u * 48000u);
    EXPECT_NE(rendered.channels, ReadSound(out + "/chords.wav").channels);
}

}  // namespace zeltests
