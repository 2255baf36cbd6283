#include <zelaudiofilterhostui/AudioFilterHostView.h>

#include <memory>

#include <gtest/gtest.h>
#include <QScreen>
#include <QTimer>
#include <zelaudiofilterhost/AudioFilterEditor.h>

#include "integration/windows/PlatformWindows.h"
#include "support/windows/Leftovers.h"
#include "ViewStage.h"

using namespace zelaudiofilterhost;
using zelaudiofilterhostui::AudioFilterHostView;
using zelcore::geom::RectF;

namespace zeltests {

namespace {

const QColor kUpper(0xE0, 0x80, 0x20);
const QColor kLower(0x20, 0x60, 0xC0);

struct Plugin {
    const char* name;
    TechnologyType technology;
    const char* path;
};

const Plugin kPlugins[] = {{"Vst2", kTechnologyVST, "/vst/good/zel_editor" ZEL_MODULE},
                           {"Vst3", kTechnologyVST3, "/vst3/good/ZelEditor3.vst3"}};

void PrintTo(const Plugin& plugin, std::ostream* out) { *out << plugin.name; }

/// A host that opens a plug-in's editor itself, in the window that the view gives it.
class AudioFilterHostViewWindowTest : public testing::TestWithParam<Plugin> {
protected:
    AudioFilterHostViewWindowTest()
        : mView(new AudioFilterHostView),
          mFilter(ViewStage::LoadFilter(GetParam().technology, std::string(ZEL_TESTPLUGINS_DIR) + GetParam().path)),
          mEditor(mFilter->GetEditor()) {
        mView->UI_SetLocalRectF({0, 0, 400, 300});
        mWindow = std::make_unique<zelui::qt::NodeWidget>(mView);
        mWindow->show();
        QObject::connect(&mTurns, &QTimer::timeout, [this] { mEditor->Idle(); });
        mTurns.start(40);
    }
    ~AudioFilterHostViewWindowTest() override { mEditor->CloseView(); }

    void Open() {
        ASSERT_TRUE(ViewStage::RunUntil([this] { return mWindows.IsViewable(mView->GetContentPlatformView()); }));
        ASSERT_TRUE(mEditor->OpenView(mView->GetContentPlatformView()));
    }
    bool RunUntilColours(const QPoint& upper, const QPoint& lower) {
        return ViewStage::RunUntil([=, this] {
            const QImage image = mWindow->screen()->grabWindow(mWindow->winId()).toImage();
            return image.pixelColor(upper) == kUpper && image.pixelColor(lower) == kLower;
        });
    }

    PlatformWindows mWindows;
    boost::intrusive_ptr<AudioFilterHostView> mView;
    ViewStage::FilterPtr mFilter;
    boost::intrusive_ptr<AudioFilterEditor> mEditor;
    std::unique_ptr<zelui::qt::NodeWidget> mWindow;
    QTimer mTurns;
};

}  // namespace

TEST_P(AudioFilterHostViewWindowTest, AnEditorOpensInTheWindowThatTheViewGives) {
    Open();
    EXPECT_TRUE(RunUntilColours({1, 1}, {299, 199}));
    EXPECT_EQ(CountWindowsIn(mView->GetContentPlatformView()), 1u);
    mEditor->CloseView();
    EXPECT_EQ(CountWindowsIn(mView->GetContentPlatformView()), 0u);
}

TEST_P(AudioFilterHostViewWindowTest, TheWindowHasTheViewsSizeAndThenTheRectThatIsSet) {
    Open();
    const auto frame = [this] { return mWindows.GetFrame(mView->GetContentPlatformView()); };
    EXPECT_TRUE(ViewStage::RunUntil([&] { return frame() == QRect(0, 0, 400, 300); }));
    mView->SetContentRect({20, 30, 300, 200});
    EXPECT_TRUE(ViewStage::RunUntil([&] { return frame() == QRect(20, 30, 300, 200); }));
    EXPECT_TRUE(RunUntilColours({21, 31}, {319, 229}));
    mView->UI_SetLocalRectF({0, 0, 320, 240});
    EXPECT_TRUE(ViewStage::RunUntil([&] { return frame() == QRect(0, 0, 320, 240); }));
    EXPECT_TRUE(RunUntilColours({1, 1}, {299, 199}));
}

TEST_P(AudioFilterHostViewWindowTest, TheWindowGoesWithTheViewsWindow) {
    Open();
    const HWND content = mView->GetContentPlatformView();
    mEditor->CloseView();
    mWindow.reset();
    EXPECT_EQ(mView->GetContentPlatformView(), nullptr);
    EXPECT_TRUE(ViewStage::RunUntil([&] { return !mWindows.Exists(content); }));
}

INSTANTIATE_TEST_SUITE_P(Formats, AudioFilterHostViewWindowTest, testing::ValuesIn(kPlugins),
                         [](const auto& test) { return std::string(test.param.name); });

}  // namespace zeltests
