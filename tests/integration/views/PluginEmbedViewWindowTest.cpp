#include <algorithm>
#include <cstdlib>

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <QEventLoop>
#include <QTest>
#include <QTimer>
#include <QWindow>
#include <zelui/OS_Window.h>
#include <zelui/SupplierInterface.h>
#include <zelui/Theme.h>
#include <zelui/UI_OSSubViewAdapter.h>

#include "integration/windows/PlatformWindows.h"
#include "support/windows/Leftovers.h"
#include "unit/views/EditorDouble.h"
#include "ViewStage.h"

namespace zeltests {

using zelui::ui::Theme;

namespace {

constexpr int kTurnMilliseconds = 40;

/// An environment variable for a while.
class Variable {
public:
    Variable(const char* name, const char* value) : mName(name), mBefore(qgetenv(name)) { qputenv(name, value); }
    ~Variable() { mBefore.isNull() ? qunsetenv(mName) : qputenv(mName, mBefore); }
    Variable(const Variable&) = delete;
    Variable& operator=(const Variable&) = delete;

private:
    const char* mName;
    QByteArray mBefore;
};

/// The view of an editor that records what is called, in a real window.
class PluginEmbedViewWindowTest : public testing::Test {
protected:
    PluginEmbedViewWindowTest() : mFilter(new FilterWithEditor), mEditor(new EditorDouble(mCalls)) {
        mFilter->editor = mEditor;
        ViewStage::MakeKnown(*mFilter);
    }

    int Count(const std::string& call) const {
        return static_cast<int>(std::count(mCalls.begin(), mCalls.end(), call));
    }
    void ShowOpen() {
        mStage.Show(mFilter);
        ASSERT_TRUE(mStage.Open());
    }
    HWND GetHostWindow() { return zelui::qt::GetWindowHandle(&mStage.GetWindow()); }
    void Press(int key, Qt::KeyboardModifiers modifiers = Qt::NoModifier) {
        QTest::keyClick(mStage.GetWindow().windowHandle(), static_cast<Qt::Key>(key), modifiers);
    }
    bool EditorsPlaceHasFocus() { return mStage.GetWindow().focusWidget() == zelui::qt::GetWidget(mStage.GetView()); }

    std::vector<std::string> mCalls;
    boost::intrusive_ptr<FilterWithEditor> mFilter;
    boost::intrusive_ptr<EditorDouble> mEditor;
    PlatformWindows mWindows;
    ViewStage mStage;
};

/// What a plug-in lets happen while it opens.
struct Interruption {
    const char* name;
    void (*act)(ViewStage&);
};

class InterruptedOpeningTest : public PluginEmbedViewWindowTest,
                               public testing::WithParamInterface<std::tuple<Interruption, bool>> {
protected:
    /// In the plug-in's call itself, or by the event loop that it runs.
    void Interrupt() {
        const Interruption& interruption = std::get<0>(GetParam());
        if (!std::get<1>(GetParam())) return interruption.act(mStage);
        QEventLoop loop;
        QTimer::singleShot(0, [&] {
            interruption.act(mStage);
            loop.quit();
        });
        loop.exec();
    }
};

const Interruption kInterruptions[] = {
    {"Closed", [](ViewStage& stage) { stage.Close(); }},
    {"WithoutItsWidget", [](ViewStage& stage) { stage.RemoveWidget(); }},
    {"WithoutItsWindow", [](ViewStage& stage) { stage.DestroyWindow(); }},
    {"LetGoOf",
     [](ViewStage& stage) {
         stage.RemoveWidget();
         stage.LetGoOfView();
     }},
    {"LetGoOfWithItsWindow",
     [](ViewStage& stage) {
         stage.LetGoOfView();
         stage.DestroyWindow();
     }},
    {"ClosedAndGone", [](ViewStage& stage) { stage.Clear(); }},
};

}  // namespace

TEST_F(PluginEmbedViewWindowTest, TheEditorIsOpenedInAWindowInsideTheHostsWindow) {
    ShowOpen();
    ASSERT_NE(mEditor->parent, nullptr);
    EXPECT_TRUE(mWindows.Exists(mEditor->parent));
    HWND window = mEditor->parent;
    for (int depth = 0; depth < 20 && window != nullptr && window != GetHostWindow(); ++depth)
        window = mWindows.GetParent(window);
    EXPECT_EQ(window, GetHostWindow());
    EXPECT_NE(mEditor->parent, GetHostWindow());
    auto* const content = dynamic_cast<zelui::ui::UI_OSSubViewAdapter*>(mStage.GetView().ChildAt(0).get());
    ASSERT_NE(content, nullptr);
    EXPECT_EQ(content->GetOSView()->GetPlatformWindow(false), mEditor->parent);
}

TEST_F(PluginEmbedViewWindowTest, TheEditorsWindowIsThereForOthersWhenItIsOpened) {
    bool existed = false;
    mEditor->onOpen = [&] { existed = mWindows.Exists(mEditor->parent); };
    ShowOpen();
    EXPECT_TRUE(existed);
}

TEST_F(PluginEmbedViewWindowTest, TheEditorsWindowHasTheEditorsSizeWhateverItBecomes) {
    ShowOpen();
    EXPECT_TRUE(mStage.RunUntil([this] { return mWindows.GetFrame(mEditor->parent).size() == QSize(300, 200); }));
    const HWND window = mEditor->parent;
    mEditor->rect = {0, 0, 420, 130};
    mEditor->GetContentSizeChangedSignal()();
    EXPECT_TRUE(mStage.RunUntil([this] { return mWindows.GetFrame(mEditor->parent).size() == QSize(420, 130); }));
    EXPECT_EQ(mStage.GetSizeChanges(), 1);
    EXPECT_EQ(mStage.GetContent().size(), QSize(420, 130));
    EXPECT_TRUE(mWindows.Exists(window)) << "it is the same window";
    mEditor->GetContentSizeChangedSignal()();
    EXPECT_EQ(mStage.GetSizeChanges(), 1) << "nothing changed";
}

TEST_F(PluginEmbedViewWindowTest, TheEditorGetsTwentyFiveTurnsASecondWhileItIsOpen) {
    ShowOpen();
    EXPECT_EQ(mStage.GetLoop().CountTimers(kTurnMilliseconds), 1u);
    EXPECT_TRUE(mStage.RunUntil([this] { return Count("idle") >= 3; }));
    mStage.Hide();
    const int idles = Count("idle");
    EXPECT_TRUE(mStage.RunUntil([&] { return Count("idle") >= idles + 2; })) << "hidden it is open all the same";
    mStage.Close();
    EXPECT_EQ(mStage.GetLoop().GetCount(), 0u);
}

TEST_F(PluginEmbedViewWindowTest, TheThemesBrightnessAndTheWishForContrastArriveWhenItOpensAndWhenTheyChange) {
    {
        const Variable contrast("GTK_THEME", "HighContrast");
        Theme::Get().Choose(Theme::kLight);
        ShowOpen();
        EXPECT_EQ(Count("theme"), 1);
        EXPECT_GT(mEditor->brightness, 0.5f);
        EXPECT_EQ(mEditor->brightness, Theme::Get().GetBrightness());
        // Not every system takes the wish from the environment.
        EXPECT_EQ(mEditor->highContrast, zelui::drawbot::SupplierInterface::GetDefault()->WantsHighContrast());
    }
    const Variable contrast("GTK_THEME", "Adwaita");
    Theme::Get().Choose(Theme::kDark);
    EXPECT_EQ(Count("theme"), 2);
    EXPECT_LT(mEditor->brightness, 0.5f);
    EXPECT_FALSE(mEditor->highContrast);
    mStage.Clear();
    Theme::Get().Choose(Theme::kSystem);
    EXPECT_EQ(Count("theme"), 2);
}

TEST_F(PluginEmbedViewWindowTest, TabEntersTheEditorAndTheEditorSaysWhenItIsLeft) {
    ShowOpen();
    mStage.GetLineBefore().setFocus();
    Press(Qt::Key_Tab);
    EXPECT_TRUE(EditorsPlaceHasFocus());
    EXPECT_GE(Count("current focus"), 1);
    mEditor->GetAdvanceFocusSignal()(true);
    EXPECT_EQ(mStage.GetWindow().focusWidget(), &mStage.GetLineAfter());
    Press(Qt::Key_Backtab, Qt::ShiftModifier);
    EXPECT_TRUE(EditorsPlaceHasFocus());
    mEditor->GetAdvanceFocusSignal()(false);
    EXPECT_EQ(mStage.GetWindow().focusWidget(), &mStage.GetLineBefore());
}

TEST_F(PluginEmbedViewWindowTest, KeysGoToTheEditorAndThoseItDoesNotUseToTheHostsWindow) {
    ShowOpen();
    mStage.GetLineBefore().setFocus();
    Press(Qt::Key_Tab);
    mCalls.clear();
    Press(Qt::Key_F5);
    EXPECT_EQ(Count("down 116 0 0"), 1);
    EXPECT_EQ(Count("up 116 0 0"), 1);
    EXPECT_EQ(mStage.GetUnusedKeys(), 1);
    mEditor->usesKeys = true;
    Press(Qt::Key_F5);
    EXPECT_EQ(Count("down 116 0 0"), 2);
    EXPECT_EQ(mStage.GetUnusedKeys(), 1);
}

TEST_F(PluginEmbedViewWindowTest, AWindowThatGoesClosesTheEditorWhileItsPlaceStillExists) {
    ShowOpen();
    bool existed = false;
    mEditor->onClose = [&] { existed = mWindows.Exists(mEditor->parent); };
    mStage.DestroyWindow();
    mEditor->onClose = {};
    EXPECT_EQ(Count("close"), 1);
    EXPECT_TRUE(existed);
    EXPECT_EQ(mStage.GetLoop().GetCount(), 0u);
}

TEST_F(PluginEmbedViewWindowTest, AWindowThatIsClosedClosesTheEditorWhileItsPlaceStillExists) {
    ShowOpen();
    bool existed = false;
    mEditor->onClose = [&] { existed = mWindows.Exists(mEditor->parent); };
    mStage.GetWindow().close();
    mEditor->onClose = {};
    EXPECT_EQ(Count("close"), 1);
    EXPECT_TRUE(existed);
    EXPECT_EQ(mStage.GetLoop().GetCount(), 0u);
    // Shown again it is another window, in which the host opens the editor anew.
    mStage.GetWindow().show();
    ASSERT_TRUE(mStage.Open());
    EXPECT_TRUE(mWindows.Exists(mEditor->parent));
    EXPECT_EQ(Count("close"), 1);
}

TEST_F(PluginEmbedViewWindowTest, AWindowThatIsOnlyHiddenKeepsTheEditorOpenInTheSamePlace) {
    ShowOpen();
    mStage.Hide();
    EXPECT_TRUE(mWindows.Exists(mEditor->parent));
    mStage.GetWindow().show();
    EXPECT_TRUE(mStage.RunUntil([this] { return mWindows.IsViewable(mEditor->parent); }));
    EXPECT_EQ(Count("open"), 1);
    EXPECT_EQ(Count("close"), 0);
}

TEST_F(PluginEmbedViewWindowTest, ATurnInWhichTheViewGoesIsTheLast) {
    ShowOpen();
    struct Leaving : EditorDouble {
        using EditorDouble::EditorDouble;
        std::function<void()> onIdle;
        void Idle() override {
            EditorDouble::Idle();
            if (onIdle) onIdle();
        }
    };
    const boost::intrusive_ptr<Leaving> editor(new Leaving(mCalls));
    mFilter->editor = editor;
    ShowOpen();
    mCalls.clear();
    editor->onIdle = [this] { mStage.Clear(); };
    EXPECT_TRUE(mStage.RunUntil([this] { return Count("close") > 0; }));
    EXPECT_THAT(mCalls, testing::ElementsAre("idle", "close"));
    EXPECT_EQ(mStage.GetLoop().GetCount(), 0u);
}

TEST_P(InterruptedOpeningTest, LeavesTheEditorClosedAndNothingBehind) {
    ViewStage::RunUntil([] { return true; });
    const std::size_t windows = CountWindows();
    mEditor->onOpen = [this] { Interrupt(); };
    mStage.Show(mFilter);
    EXPECT_FALSE(mStage.Open());
    EXPECT_FALSE(mEditor->IsOpen());
    EXPECT_EQ(Count("open"), 1);
    EXPECT_EQ(Count("close"), 1);
    EXPECT_EQ(Count("rect"), 0) << "it is not asked for anything any more";
    EXPECT_EQ(mStage.GetLoop().GetCount(), 0u);
    mEditor->onOpen = {};
    // What is left of the window takes an editor as ever.
    ShowOpen();
    EXPECT_TRUE(mEditor->IsOpen());
    mStage.Clear();
    EXPECT_FALSE(mEditor->IsOpen());
    EXPECT_EQ(mEditor->GetContentSizeChangedSignal().num_slots(), 0u);
    EXPECT_EQ(mFilter->GetRefCount(), 1);
    EXPECT_TRUE(mStage.RunUntil([&] { return CountWindows() <= windows; }));
    EXPECT_EQ(mStage.GetLoop().GetCount(), 0u);
}

INSTANTIATE_TEST_SUITE_P(Ways, InterruptedOpeningTest,
                         testing::Combine(testing::ValuesIn(kInterruptions), testing::Bool()), [](const auto& test) {
                             return std::string(std::get<0>(test.param).name) +
                                    (std::get<1>(test.param) ? "ByTheEventLoop" : "InTheCall");
                         });

}  // namespace zeltests
