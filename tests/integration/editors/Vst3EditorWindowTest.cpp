#include <algorithm>
#include <cstdio>
#include <filesystem>

#include <gtest/gtest.h>
#include <zelui/QtBridge.h>

#include "EditorStage.h"
#include "support/InstalledPlugins.h"
#include "support/windows/Leftovers.h"
#include "support/windows/RunLoopUse.h"

using namespace zelaudiofilterhost;
using namespace zeltests;

namespace {

const QColor kUpper(0xE0, 0x80, 0x20);
const QColor kLower(0x20, 0x60, 0xC0);
constexpr int kSize = 0;
constexpr int kUntidy = 7;

class Vst3EditorWindowTest : public testing::Test {
protected:
    void Load(const std::string& name) {
        mStage.Load(kTechnologyVST3, ZEL_TESTPLUGINS_DIR "/vst3/good/" + name + ".vst3");
    }
    std::size_t CountWindowsInPlace() { return CountWindowsIn(zelui::qt::GetWindowHandle(&mStage.GetPlace())); }
    /// Until the editor's two colours reach as far as its size.
    bool RunUntilDrawnAs(int width, int height) {
        return mStage.RunUntil([=, this] {
            const QImage image = mStage.Grab();
            return image.width() == width && image.height() == height && image.pixelColor(0, 0) == kUpper &&
                   image.pixelColor(width - 1, height / 2 - 1) == kUpper && image.pixelColor(0, height / 2) == kLower &&
                   image.pixelColor(width - 1, height - 1) == kLower;
        });
    }
    /// Opens the editor, waits for a picture, closes it.
    void Cycle() {
        ASSERT_TRUE(mStage.Open());
        EXPECT_TRUE(mStage.RunUntilDrawn());
        EXPECT_GT(CountWindowsInPlace(), 0u);
        mStage.Close();
        EXPECT_TRUE(mStage.RunUntil([this] { return CountWindowsInPlace() == 0; }));
        EXPECT_EQ(mStage.CountInMainLoop(), 0u);
    }

    EditorStage mStage;
};

}  // namespace

TEST_F(Vst3EditorWindowTest, TheEditorDrawsWhenTheRunLoopSaysSoAndItsWindowGoesWithIt) {
    Load("ZelEditor3");
    ASSERT_TRUE(mStage.Open());
    EXPECT_EQ(CountWindowsInPlace(), 1u);
    EXPECT_TRUE(RunUntilDrawnAs(300, 200));
    EXPECT_EQ(mStage.CountInMainLoop(), GetRunLoopUse());
    mStage.Close();
    EXPECT_EQ(CountWindowsInPlace(), 0u);
    EXPECT_EQ(mStage.CountInMainLoop(), 0u);
    ASSERT_TRUE(mStage.Open());
    EXPECT_TRUE(RunUntilDrawnAs(300, 200));
    mStage.Unload();
    EXPECT_EQ(CountWindowsInPlace(), 0u);
    EXPECT_EQ(mStage.CountInMainLoop(), 0u);
}

TEST_F(Vst3EditorWindowTest, TheWindowFollowsTheSizeThatThePluginAsksFor) {
    Load("ZelEditor3");
    ASSERT_TRUE(mStage.Open());
    EXPECT_TRUE(RunUntilDrawnAs(300, 200));
    mStage.GetFilter().SetParameterValue(kSize, 1.0f);
    EXPECT_TRUE(RunUntilDrawnAs(600, 400));
    EXPECT_EQ(mStage.GetSizeChanges(), 1);
    mStage.GetFilter().SetParameterValue(kSize, 0.5f);
    EXPECT_TRUE(RunUntilDrawnAs(450, 300));
    EXPECT_EQ(mStage.GetSizeChanges(), 2);
}

TEST_F(Vst3EditorWindowTest, OpeningAnOpenEditorLeavesOneWindow) {
    Load("ZelEditor3");
    ASSERT_TRUE(mStage.Open());
    ASSERT_TRUE(mStage.Open());
    EXPECT_EQ(CountWindowsInPlace(), 1u);
    EXPECT_TRUE(RunUntilDrawnAs(300, 200));
    EXPECT_EQ(mStage.CountInMainLoop(), GetRunLoopUse());
}

TEST_F(Vst3EditorWindowTest, APluginThatAsksForSizesWithoutEndLeavesTheHostAtWork) {
    Load("ZelEditorRestless3");
    ASSERT_TRUE(mStage.Open());
    EXPECT_TRUE(mStage.RunUntil([this] { return mStage.GetSizeChanges() > 10; }));
    mStage.Close();
    EXPECT_EQ(mStage.CountInMainLoop(), 0u);
}

TEST_F(Vst3EditorWindowTest, NothingIsLeftBehind) {
    Load("ZelEditor3");
    Cycle();
    const std::size_t windows = CountWindows();
    const std::size_t descriptors = CountDescriptors();
    for (int i = 0; i < 3; ++i) Cycle();
    mStage.GetFilter().SetParameterValue(kUntidy, 1.0f);
    for (int i = 0; i < 3; ++i) Cycle();
    EXPECT_EQ(CountWindows(), windows);
    EXPECT_EQ(CountDescriptors(), descriptors);
}

/// Prints what each leaves behind; only those of the packages are held to leaving nothing.
TEST_F(Vst3EditorWindowTest, EveryInstalledEditorOpensDrawsAndLeavesNothingInTheMainLoop) {
    std::size_t opened = 0;
    std::printf("%-24s %-9s %8s %8s\n", "editor", "size", "windows", "files");
    for (const std::string& path : FindInstalledPlugins()) {
        if (!path.ends_with(".vst3")) continue;
        SCOPED_TRACE(path);
        mStage.Load(kTechnologyVST3, path);
        if (mStage.GetEditor() == nullptr) continue;
        Cycle();
        const auto windows = static_cast<long>(CountWindows());
        const auto descriptors = static_cast<long>(CountDescriptors());
        const zelcore::geom::Rect rect = mStage.GetEditor()->GetViewRect();
        Cycle();
        Cycle();
        const long windowsLeft = static_cast<long>(CountWindows()) - windows;
        const long descriptorsLeft = static_cast<long>(CountDescriptors()) - descriptors;
        const std::string name = std::filesystem::path(path).stem().string();
        if (name.starts_with("Za")) {
            EXPECT_EQ(windowsLeft, 0);
            EXPECT_EQ(descriptorsLeft, 0);
        }
        const std::string size = std::to_string(rect.width) + "x" + std::to_string(rect.height);
        std::printf("%-24s %-9s %+8ld %+8ld\n", name.c_str(), size.c_str(), windowsLeft, descriptorsLeft);
        ++opened;
    }
    mStage.Unload();
    EXPECT_EQ(mStage.CountInMainLoop(), 0u);
    if (opened == 0) GTEST_SKIP() << "no VST3 plug-in with an editor is installed";
}
