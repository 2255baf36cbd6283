#include <gtest/gtest.h>
#include <zelcore/Utf.h>
#include <zelui/QtBridge.h>

#include "EditorStage.h"
#include "support/InstalledPlugins.h"
#include "support/windows/Leftovers.h"

using namespace zelaudiofilterhost;
using namespace zeltests;

namespace {

const QColor kUpper(0xE0, 0x80, 0x20);
const QColor kLower(0x20, 0x60, 0xC0);

class Vst2EditorWindowTest : public testing::Test {
protected:
    void Load(const std::string& name) {
        mStage.Load(kTechnologyVST, ZEL_TESTPLUGINS_DIR "/vst/good/" + name + ZEL_MODULE);
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
    }

    EditorStage mStage;
};

struct InstalledEditor {
    const char* path;
    bool cleansUp;  ///< the family of the last one leaves windows of its own behind, whatever host it is in
};

/// Editors of the system's packages, one of each family.
class Vst2InstalledEditorTest : public Vst2EditorWindowTest, public testing::WithParamInterface<InstalledEditor> {};

}  // namespace

TEST_F(Vst2EditorWindowTest, TheEditorDrawsIntoItsPlaceAndItsWindowGoesWithIt) {
    Load("zel_editor");
    ASSERT_TRUE(mStage.Open());
    EXPECT_EQ(CountWindowsInPlace(), 1u);
    EXPECT_TRUE(RunUntilDrawnAs(300, 200));
    mStage.Close();
    EXPECT_EQ(CountWindowsInPlace(), 0u);
    ASSERT_TRUE(mStage.Open());
    EXPECT_TRUE(RunUntilDrawnAs(300, 200));
    mStage.Unload();
    EXPECT_EQ(CountWindowsInPlace(), 0u);
}

TEST_F(Vst2EditorWindowTest, TheWindowFollowsTheSizeThatThePluginAsksFor) {
    Load("zel_editor");
    ASSERT_TRUE(mStage.Open());
    EXPECT_TRUE(RunUntilDrawnAs(300, 200));
    mStage.GetFilter().SetParameterValue(0, 1.0f);
    EXPECT_TRUE(RunUntilDrawnAs(600, 400));
    EXPECT_EQ(mStage.GetSizeChanges(), 1);
    mStage.GetFilter().SetParameterValue(0, 0.5f);
    EXPECT_TRUE(RunUntilDrawnAs(450, 300));
    EXPECT_EQ(mStage.GetSizeChanges(), 2);
}

TEST_F(Vst2EditorWindowTest, OpeningAnOpenEditorLeavesOneWindow) {
    Load("zel_editor");
    ASSERT_TRUE(mStage.Open());
    ASSERT_TRUE(mStage.Open());
    EXPECT_EQ(CountWindowsInPlace(), 1u);
    EXPECT_TRUE(RunUntilDrawnAs(300, 200));
}

TEST_F(Vst2EditorWindowTest, TheEditorGetsItsTurns) {
    Load("zel_editor");
    ASSERT_TRUE(mStage.Open());
    const float before = mStage.GetFilter().GetParameterValue(1);
    EXPECT_TRUE(mStage.RunUntil([&] { return mStage.GetFilter().GetParameterValue(1) >= before + 0.005f; }));
}

TEST_F(Vst2EditorWindowTest, APluginThatAsksForSizesWithoutEndLeavesTheHostAtWork) {
    Load("zel_editor_restless");
    ASSERT_TRUE(mStage.Open());
    EXPECT_TRUE(mStage.RunUntil([this] { return mStage.GetSizeChanges() > 10; }));
    mStage.Close();
    EXPECT_EQ(mStage.CountInMainLoop(), 0u);
}

TEST_F(Vst2EditorWindowTest, NothingIsLeftBehind) {
    Load("zel_editor");
    Cycle();
    const std::size_t windows = CountWindows();
    const std::size_t descriptors = CountDescriptors();
    for (int i = 0; i < 3; ++i) Cycle();
    EXPECT_EQ(CountWindows(), windows);
    EXPECT_EQ(CountDescriptors(), descriptors);
    EXPECT_EQ(mStage.CountInMainLoop(), 0u);
}

TEST_P(Vst2InstalledEditorTest, OpensDrawsAndLeavesNothingBehind) {
    if (!IsInstalled(GetParam().path)) GTEST_SKIP() << GetParam().path << " is not installed";
    mStage.Load(kTechnologyVST, GetParam().path);
    ASSERT_TRUE(mStage.GetEditor());
    Cycle();
    const std::size_t windows = CountWindows();
    const std::size_t descriptors = CountDescriptors();
    for (int i = 0; i < 2; ++i) Cycle();
    EXPECT_EQ(mStage.CountInMainLoop(), 0u);
    if (!GetParam().cleansUp) return;
    EXPECT_EQ(CountWindows(), windows);
    EXPECT_EQ(CountDescriptors(), descriptors);
}

INSTANTIATE_TEST_SUITE_P(Packages, Vst2InstalledEditorTest,
                         testing::Values(InstalledEditor{"/usr/lib/vst/ZamComp-vst.so", true},
                                         InstalledEditor{"/usr/lib/vst/3BandEQ-vst.so", true},
                                         InstalledEditor{"/usr/lib/vst/lsp-plugins/compressor-mono.so", false}));
