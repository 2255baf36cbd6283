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
using testing::IsEmpty;

namespace {

std::string TestPlugin(const std::string& path) { return std::string(ZEL_TESTPLUGINS_DIR) + "/" + path; }

std::size_t CountColours(const QImage& picture) {
    std::set<QRgb> colours;
    for (int x = 0; x < picture.width(); ++x) {
        for (int y = 0; y < picture.height(); ++y) colours.insert(picture.pixel(x, y));
    }
    return colours.size();
}

}  // namespace

/// `tessaly edit` as a user calls it, without a display.
class TessalyEditTest : public testing::Test {
protected:
    std::unique_ptr<Program> Run(std::vector<std::string> arguments, const std::vector<std::string>& environment = {}) {
        arguments.insert(arguments.begin(), {std::string(ZEL_BIN_DIR) + "/tessaly"});
        std::vector<std::string> variables = {SettingsIn(mFolder.Path("profile")),
                                              "VST3_PATH=", "VST_PATH=" + TestPlugin("vst/good"),
                                              "ZEL_SCANNER_TIMEOUT_SECONDS=10"};
        variables.insert(variables.end(), environment.begin(), environment.end());
        std::unique_ptr<Program> program = std::make_unique<Program>(mFolder.GetPath(), arguments, variables);
        program->Wait();
        return program;
    }
    std::string GetPicturePath() const { return mFolder.Path("picture.png"); }

    QImage TakePicture(const std::string& plugin, const std::vector<std::string>& options = {},
                       const std::vector<std::string>& environment = {}) {
        std::vector<std::string> arguments = {"edit", "--screenshot", GetPicturePath()};
        arguments.insert(arguments.end(), options.begin(), options.end());
        arguments.push_back(plugin);
        const std::unique_ptr<Program> program = Run(arguments, environment);
        EXPECT_EQ(program->Wait(), 0) << program->GetErrors();
        return QImage(QString::fromStdString(GetPicturePath()));
    }

    ThrowAwayFolder mFolder;
};

TEST_F(TessalyEditTest, AnEditorIsAsLargeAsItsRows) {
    EXPECT_EQ(TakePicture(TestPlugin("vst/good/zel_gain" ZEL_MODULE)).size(), QSize(380, 88));
}

TEST_F(TessalyEditTest, AtTwiceTheScaleItHasTwiceThePixels) {
    EXPECT_EQ(TakePicture(TestPlugin("vst/good/zel_gain" ZEL_MODULE), {}, {"QT_SCALE_FACTOR=2"}).size(),
              QSize(760, 176));
}

TEST_F(TessalyEditTest, TheDarkThemeIsDarkAndTheLightOneIsLight) {
    const std::string plugin = TestPlugin("vst/good/zel_gain" ZEL_MODULE);
    EXPECT_LT(TakePicture(plugin, {"--theme", "dark"}).pixelColor(1, 1).lightnessF(), 0.4);
    EXPECT_GT(TakePicture(plugin, {"--theme", "light"}).pixelColor(1, 1).lightnessF(), 0.8);
}

TEST_F(TessalyEditTest, ManyParametersScrollInAWindowThatFitsTheScreen) {
    const QImage picture = TakePicture(TestPlugin("vst/good/zel_many" ZEL_MODULE));
    EXPECT_GT(picture.width(), 380);
    EXPECT_LE(picture.height(), 640);
    EXPECT_GE(picture.height(), 66);
}

TEST_F(TessalyEditTest, AnEffectWithoutParametersSaysSo) {
    const QImage picture = TakePicture(TestPlugin("vst/good/zel_plain" ZEL_MODULE));
    EXPECT_GE(picture.width(), 380);
    EXPECT_GT(CountColours(picture), 2u);
}

TEST_F(TessalyEditTest, TheChannelMapShowsARowForEachChannelOfTheTrackAndItsSideChain) {
    const std::string plugin = TestPlugin("vst/good/zel_sidechain" ZEL_MODULE);
    const QImage stereo = TakePicture(plugin, {"--channel-map"});
    EXPECT_GT(CountColours(stereo), 2u);
    const int row = TakePicture(plugin, {"--channel-map", "--track", "3.0"}).height() - stereo.height();
    EXPECT_GT(row, 10);
    EXPECT_EQ(TakePicture(plugin, {"--channel-map", "--side-chain", "stereo"}).height(), stereo.height() + 2 * row);
    EXPECT_EQ(TakePicture(plugin, {"--channel-map", "--track", "stereo"}), stereo);
}

TEST_F(TessalyEditTest, AChannelMapOfManyChannelsScrollsInAWindowThatFitsTheScreen) {
    const QImage picture = TakePicture(TestPlugin("vst/good/zel_gain" ZEL_MODULE), {"--channel-map", "--track", "64"});
    EXPECT_LE(picture.height(), 640);
    EXPECT_GT(CountColours(picture), 2u);
}

TEST_F(TessalyEditTest, AChannelMapAtTwiceTheScaleHasTwiceThePixelsInBothThemes) {
    const std::string plugin = TestPlugin("vst3/good/ZelSideChain3.vst3");
    for (const std::string theme : {"light", "dark"}) {
        const std::vector<std::string> options = {"--channel-map", "--theme", theme};
        const QImage picture = TakePicture(plugin, options);
        EXPECT_EQ(TakePicture(plugin, options, {"QT_SCALE_FACTOR=2"}).size(), picture.size() * 2);
        EXPECT_EQ(picture.pixelColor(1, 1).lightnessF() > 0.6, theme == "light");
    }
}

TEST_F(TessalyEditTest, ATrackIsGivenToTheParametersToo) {
    const std::string plugin = TestPlugin("vst/good/zel_gain" ZEL_MODULE);
    EXPECT_EQ(TakePicture(plugin, {"--generic", "--track", "5.1", "--side-chain", "mono"}).size(), QSize(380, 88));
}

TEST_F(TessalyEditTest, AnUnknownLayoutIsToldWithThoseThatAreKnown) {
    for (const std::string option : {"--track", "--side-chain"}) {
        const std::unique_ptr<Program> program = Run({"edit", "--channel-map", option, "octagonal", "one"});
        EXPECT_EQ(program->Wait(), 2);
        EXPECT_THAT(program->GetErrors(),
                    HasSubstr("no channel layout 'octagonal', but mono, stereo, 3.0, quad, 5.0, 5.1, 6.1, 7.1, 7.1.2, "
                              "7.1.4, or a number of channels"));
    }
}

TEST_F(TessalyEditTest, ANameOfTheCatalogueIsEnough) {
    ASSERT_EQ(Run({"scan"})->Wait(), 0);
    EXPECT_EQ(TakePicture("zel gain").size(), QSize(380, 88));
}

TEST_F(TessalyEditTest, AnUnknownNameIsToldWithWhatToDo) {
    const std::unique_ptr<Program> program = Run({"edit", "--screenshot", GetPicturePath(), "Nobody"});
    EXPECT_EQ(program->Wait(), 1);
    EXPECT_THAT(program->GetErrors(), HasSubstr("there is no plug-in called 'Nobody'"));
    EXPECT_FALSE(std::filesystem::exists(GetPicturePath()));
}

TEST_F(TessalyEditTest, OfSeveralComponentsTheUserIsAskedForOne) {
    const std::string shell = TestPlugin("vst/good/zel_shell" ZEL_MODULE);
    const std::unique_ptr<Program> program = Run({"edit", "--screenshot", GetPicturePath(), shell});
    EXPECT_EQ(program->Wait(), 1);
    EXPECT_THAT(program->GetErrors(), HasSubstr("may be one of several"));
    const std::unique_ptr<Program> other =
        Run({"edit", "--screenshot", GetPicturePath(), "--component", "Nobody", shell});
    EXPECT_THAT(other->GetErrors(), HasSubstr("has no component called 'Nobody'"));
}

TEST_F(TessalyEditTest, AFileThatIsNoPluginIsToldWithTheReason) {
    const std::unique_ptr<Program> program =
        Run({"edit", "--screenshot", GetPicturePath(), TestPlugin("vst/bad/no_entry" ZEL_MODULE)});
    EXPECT_EQ(program->Wait(), 1);
    EXPECT_THAT(program->GetErrors(), HasSubstr("no_entry" ZEL_MODULE "' "));
}

TEST_F(TessalyEditTest, WithoutADisplayAndWithoutAPictureThereIsNothingToShowItOn) {
    const std::unique_ptr<Program> program = Run({"edit", TestPlugin("vst/good/zel_gain" ZEL_MODULE)});
    EXPECT_EQ(program->Wait(), 1);
    EXPECT_THAT(program->GetErrors(), HasSubstr("no display"));
}

TEST_F(TessalyEditTest, APictureThatCannotBeWrittenIsAFailure) {
    const std::unique_ptr<Program> program =
        Run({"edit", "--screenshot", mFolder.Path("missing/picture.png"), TestPlugin("vst/good/zel_gain" ZEL_MODULE)});
    EXPECT_EQ(program->Wait(), 1);
    EXPECT_THAT(program->GetErrors(), HasSubstr("could not be written"));
}

TEST_F(TessalyEditTest, ArgumentsThatMakeNoSenseAreWrongUsage) {
    const std::vector<std::vector<std::string>> wrong = {{"edit"},
                                                         {"edit", "one", "two"},
                                                         {"edit", "--theme", "green", "one"},
                                                         {"edit", "--theme"},
                                                         {"edit", "--json", "one"},
                                                         {"edit", "--track"},
                                                         {"edit", "--track", "65", "one"},
                                                         {"edit", "--generic", "--channel-map", "one"}};
    for (const std::vector<std::string>& arguments : wrong) {
        const std::unique_ptr<Program> program = Run(arguments);
        EXPECT_EQ(program->Wait(), 2) << testing::PrintToString(arguments);
        EXPECT_THAT(program->GetOutput(), IsEmpty());
    }
}

}  // namespace zeltests
