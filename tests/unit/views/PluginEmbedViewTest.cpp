#include "views/PluginEmbedView.h"

#include <algorithm>
#include <memory>

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <QApplication>
#include <zelaudiofilterhostui/AudioFilterHostView.h>
#include <zelui/QtBridge.h>

#include "EditorDouble.h"
#include "support/WaitFor.h"

namespace zeltests {

using testing::ElementsAre;
using testing::IsEmpty;
using zelaudiofilterhostui::AudioFilterHostView;
using zelaudiofilterhostui::PluginEmbedView;
using zelcore::geom::RectF;
using zelui::ui::OS_ViewContainer;
using zelui::ui::OS_Window;
using zelui::ui::Theme;
using zelui::ui::UI_Node;

namespace {

bool ProcessUntil(const std::function<bool()>& condition, std::chrono::milliseconds limit = std::chrono::seconds(20)) {
    return WaitFor(condition, limit, [] { QApplication::processEvents(); });
}

/// Gives a test what only the toolkit may call.
template <typename View>
class Open : public View {
public:
    using View::ReleaseOSViewContainer;
    using View::UI_DisabledStateChanged;
    using View::UI_NodeChanged;
    using View::View;

    int draws = 0;

    void UI_Draw(zelui::drawbot::Drawbot& drawbot) override {
        ++draws;
        View::UI_Draw(drawbot);
    }
};

typedef Open<PluginEmbedView> EmbedView;
typedef Open<AudioFilterHostView> HostView;

class TimerView : public PluginEmbedView {
public:
    using PluginEmbedView::PluginEmbedView;
    int ticks = 0;
    bool UI_DoTimerNotify(long timer) override {
        ++ticks;
        return PluginEmbedView::UI_DoTimerNotify(timer);
    }
};

boost::intrusive_ptr<OS_Window> GetOnlyWindow(OS_Window& window) {
    if (window.ChildCount() != 1) return nullptr;
    return dynamic_cast<OS_Window*>(window.ChildAt(0).get());
}

}  // namespace

class PluginEmbedViewTest : public testing::Test {
protected:
    PluginEmbedViewTest() : mFilter(new FilterWithEditor), mEditor(new EditorDouble(mCalls)) {}

    /// A view in a window, as an editor view puts it there before it attaches the editor.
    boost::intrusive_ptr<EmbedView> ShowView(const boost::intrusive_ptr<FilterWithEditor>& filter) {
        const boost::intrusive_ptr<EmbedView> view(new EmbedView(filter, mEditor));
        mWindow = std::make_unique<zelui::qt::NodeWidget>(view);
        mWindow->show();
        return view;
    }
    void CloseWindow() {
        mWindow.reset();
        QApplication::processEvents();
    }

    std::vector<std::string> mCalls;
    boost::intrusive_ptr<FilterWithEditor> mFilter;
    boost::intrusive_ptr<EditorDouble> mEditor;
    std::unique_ptr<zelui::qt::NodeWidget> mWindow;
};

TEST_F(PluginEmbedViewTest, WithoutAFilterThereIsNoWindowAndTheEditorIsNeverCalled) {
    boost::intrusive_ptr<EmbedView> view = ShowView(nullptr);
    EXPECT_EQ(view->GetOSViewContainer()->ChildCount(), 0u);
    view->AttachEditor();
    CloseWindow();
    view.reset();
    EXPECT_THAT(mCalls, IsEmpty());
}

TEST_F(PluginEmbedViewTest, WithAFilterThereIsAWindowInTheAdaptersContainer) {
    const boost::intrusive_ptr<EmbedView> view(new EmbedView(mFilter, mEditor));
    const boost::intrusive_ptr<OS_Window> window = GetOnlyWindow(*view->GetOSViewContainer());
    ASSERT_NE(window, nullptr);
    EXPECT_TRUE(window->UI_IsShown());
    EXPECT_EQ(view->GetOSView(), window.get());
    EXPECT_THAT(mCalls, IsEmpty());
}

TEST_F(PluginEmbedViewTest, AttachingOpensTheEditorTellsItTheThemeAndTakesItsSize) {
    const boost::intrusive_ptr<EmbedView> view = ShowView(mFilter);
    view->UI_SetLocalRectF({5.0f, 6.0f, 10.0f, 10.0f});
    view->AttachEditor();
    EXPECT_THAT(mCalls, ElementsAre("open", "theme", "rect"));
    EXPECT_EQ(mEditor->brightness, Theme::Get().GetBrightness());
    EXPECT_EQ(view->UI_GetLocalRectF(), (RectF{5.0f, 6.0f, 300.0f, 200.0f}));
}

TEST_F(PluginEmbedViewTest, OutsideAWindowThereIsNoThemeToTell) {
    const boost::intrusive_ptr<EmbedView> view(new EmbedView(mFilter, mEditor));
    view->AttachEditor();
    EXPECT_THAT(mCalls, ElementsAre("open", "rect"));
}

TEST_F(PluginEmbedViewTest, AnAttachedEditorGetsItsTurnUntilTheViewGoes) {
    boost::intrusive_ptr<EmbedView> view = ShowView(mFilter);
    view->AttachEditor();
    mCalls.clear();
    EXPECT_TRUE(ProcessUntil([this] { return mCalls.size() >= 3; }));
    EXPECT_THAT(mCalls, testing::Each("idle"));
    mCalls.clear();
    view->DetachEditor();
    EXPECT_THAT(mCalls, ElementsAre("close"));
    CloseWindow();
    view.reset();
    EXPECT_THAT(mCalls, ElementsAre("close"));
}

TEST_F(PluginEmbedViewTest, AViewThatLosesItsWindowWhileItIsOpenClosesTheEditorBeforeTheWindowGoes) {
    const boost::intrusive_ptr<EmbedView> view = ShowView(mFilter);
    view->AttachEditor();
    mCalls.clear();
    CloseWindow();
    EXPECT_THAT(mCalls, ElementsAre("close"));
    EXPECT_FALSE(ProcessUntil([this] { return mCalls.size() > 1; }, std::chrono::milliseconds(100)));
}

TEST_F(PluginEmbedViewTest, AnotherViewThatOpensTheEditorTakesItAway) {
    const boost::intrusive_ptr<EmbedView> former = ShowView(mFilter);
    former->AttachEditor();
    const std::unique_ptr<zelui::qt::NodeWidget> formerWindow = std::move(mWindow);
    const boost::intrusive_ptr<EmbedView> view = ShowView(mFilter);
    mCalls.clear();
    view->AttachEditor();
    EXPECT_THAT(mCalls, ElementsAre("open", "theme", "rect"));
    Theme::Get().Choose(Theme::kLight);
    mCalls.clear();
    Theme::Get().Choose(Theme::kDark);
    EXPECT_EQ(std::count(mCalls.begin(), mCalls.end(), "theme"), 1) << "it is told by one of them";
    Theme::Get().Choose(Theme::kSystem);
    mCalls.clear();
    former->UI_DoTimerNotify(1);
    former->SyncSizeFromEditor();
    former->DetachEditor();
    EXPECT_THAT(mCalls, IsEmpty());
    EXPECT_TRUE(mEditor->IsOpen());
    EXPECT_TRUE(ProcessUntil([this] { return mCalls.size() >= 3; })) << "it gets its turns from the other one";
    view->DetachEditor();
    EXPECT_FALSE(mEditor->IsOpen());
    mCalls.clear();
    EXPECT_FALSE(ProcessUntil([this] { return !mCalls.empty(); }, std::chrono::milliseconds(100)));
}

TEST_F(PluginEmbedViewTest, TheFormerViewsTimerEndsWhenAnotherViewOpensTheEditor) {
    const boost::intrusive_ptr<TimerView> former(new TimerView(mFilter, mEditor));
    mWindow = std::make_unique<zelui::qt::NodeWidget>(former);
    mWindow->show();
    former->AttachEditor();
    ASSERT_TRUE(ProcessUntil([&former] { return former->ticks > 0; }));
    const boost::intrusive_ptr<EmbedView> view(new EmbedView(mFilter, mEditor));
    view->AttachEditor();
    former->ticks = 0;
    EXPECT_FALSE(ProcessUntil([&former] { return former->ticks > 0; }, std::chrono::milliseconds(200)));
}

TEST_F(PluginEmbedViewTest, AViewThatLosesTheEditorWhileItOpensDoesNotCloseItForTheOther) {
    struct Ignorant : EditorDouble {
        using EditorDouble::EditorDouble;
        bool OpenView(HWND window) override {
            EditorDouble::OpenView(window);
            return true;
        }
    };
    mEditor = new Ignorant(mCalls);
    mCalls.clear();
    const boost::intrusive_ptr<EmbedView> former = ShowView(mFilter);
    const boost::intrusive_ptr<EmbedView> view(new EmbedView(mFilter, mEditor));
    mEditor->onOpen = [this, &view] {
        mEditor->onOpen = {};
        view->AttachEditor();
    };
    former->AttachEditor();
    former->DetachEditor();
    EXPECT_THAT(mCalls, ElementsAre("open", "open", "rect"));
    EXPECT_TRUE(mEditor->IsOpen());
    view->DetachEditor();
    EXPECT_FALSE(mEditor->IsOpen());
}

TEST_F(PluginEmbedViewTest, ViewsOfDifferentEditorsLeaveEachOtherAlone) {
    std::vector<std::string> calls;
    const boost::intrusive_ptr<EditorDouble> editor(new EditorDouble(calls));
    const boost::intrusive_ptr<EmbedView> first(new EmbedView(mFilter, mEditor));
    const boost::intrusive_ptr<EmbedView> second(new EmbedView(mFilter, editor));
    first->AttachEditor();
    second->AttachEditor();
    first->DetachEditor();
    EXPECT_THAT(mCalls, ElementsAre("open", "rect", "close"));
    second->DetachEditor();
    EXPECT_THAT(calls, ElementsAre("open", "rect", "close"));
}

TEST_F(PluginEmbedViewTest, AViewMayBeLetGoOfWhileTheEditorIsAskedForItsSize) {
    boost::intrusive_ptr<EmbedView> view(new EmbedView(mFilter, mEditor));
    view->AttachEditor();
    mEditor->onRect = [&view] { view.reset(); };
    view->SyncSizeFromEditor();
    EXPECT_FALSE(mEditor->IsOpen());
}

TEST_F(PluginEmbedViewTest, AnEditorThatDoesNotOpenHasNoSizeAndGetsNoTurns) {
    const boost::intrusive_ptr<EmbedView> view = ShowView(mFilter);
    mEditor->opens = false;
    view->AttachEditor();
    EXPECT_THAT(mCalls, ElementsAre("open"));
    EXPECT_EQ(view->UI_GetLocalRectF(), RectF());
    view->DetachEditor();
    EXPECT_THAT(mCalls, ElementsAre("open"));
}

TEST_F(PluginEmbedViewTest, AnEditorThatOpenedIsClosedWhenWhatFollowsFails) {
    const boost::intrusive_ptr<EmbedView> view = ShowView(mFilter);
    mEditor->onRect = [] { throw std::runtime_error("the host's framework fails"); };
    EXPECT_THROW(view->AttachEditor(), std::runtime_error);
    EXPECT_THAT(mCalls, ElementsAre("open", "theme", "rect", "close"));
}

TEST_F(PluginEmbedViewTest, TheEditorKnowsTheScreensScaleBeforeItIsOpened) {
    const boost::intrusive_ptr<EmbedView> view = ShowView(mFilter);
    view->AttachEditor();
    EXPECT_EQ(mEditor->GetContentScale(), view->UI_GetPixelScale());
    EXPECT_EQ(mEditor->scaleWhenOpened, view->UI_GetPixelScale());
}

TEST_F(PluginEmbedViewTest, ATimerOfAnyIdGivesTheEditorItsTurnAndGoesOn) {
    const boost::intrusive_ptr<EmbedView> view(new EmbedView(mFilter, mEditor));
    EXPECT_TRUE(view->UI_DoTimerNotify(4711));
    EXPECT_THAT(mCalls, ElementsAre("idle"));
    const boost::intrusive_ptr<EmbedView> empty(new EmbedView(mFilter, nullptr));
    EXPECT_TRUE(empty->UI_DoTimerNotify(4711));
}

TEST_F(PluginEmbedViewTest, AViewThatWasNeverAttachedNeverClosesTheEditor) {
    boost::intrusive_ptr<EmbedView> view = ShowView(mFilter);
    CloseWindow();
    view.reset();
    EXPECT_THAT(mCalls, IsEmpty());
}

TEST_F(PluginEmbedViewTest, AThemeThatChangesIsPassedOnUntilTheViewGoes) {
    boost::intrusive_ptr<EmbedView> view = ShowView(mFilter);
    view->AttachEditor();
    Theme::Get().Choose(Theme::kLight);
    mCalls.clear();
    Theme::Get().Choose(Theme::kDark);
    EXPECT_EQ(std::count(mCalls.begin(), mCalls.end(), "theme"), 1);
    EXPECT_LT(mEditor->brightness, 0.5f);
    CloseWindow();
    view.reset();
    mCalls.clear();
    Theme::Get().Choose(Theme::kLight);
    Theme::Get().Choose(Theme::kSystem);
    EXPECT_THAT(mCalls, IsEmpty());
}

TEST_F(PluginEmbedViewTest, TheEndLetsGoOfTheEditorAndThenOfTheFilter) {
    struct Filter : FilterWithEditor {
        explicit Filter(std::vector<std::string>& calls) : mCalls(calls) {}
        ~Filter() override { mCalls.push_back("filter gone"); }
        std::vector<std::string>& mCalls;
    };
    boost::intrusive_ptr<EmbedView> view(new EmbedView(new Filter(mCalls), mEditor));
    mEditor.reset();
    view->AttachEditor();
    mCalls.clear();
    view.reset();
    EXPECT_THAT(mCalls, ElementsAre("close", "editor gone", "filter gone"));
}

TEST_F(PluginEmbedViewTest, WhereTheEditorsWindowDoesNotCoverItTheViewIsMidGrey) {
    const boost::intrusive_ptr<EmbedView> view = ShowView(mFilter);
    view->UI_SetLocalRectF({3.0f, 4.0f, 40.0f, 30.0f});
    view->GetOSViewContainer()->UI_Show(false);
    const QImage picture = mWindow->grab().toImage();
    ASSERT_EQ(picture.size(), QSize(40, 30));
    for (const QPoint corner : {QPoint(0, 0), QPoint(39, 0), QPoint(0, 29), QPoint(39, 29)}) {
        EXPECT_NEAR(picture.pixelColor(corner).red(), 128, 1);
        EXPECT_NEAR(picture.pixelColor(corner).green(), 128, 1);
        EXPECT_NEAR(picture.pixelColor(corner).blue(), 128, 1);
    }
}

TEST_F(PluginEmbedViewTest, DisablingItPaintsItAtOnce) {
    const boost::intrusive_ptr<EmbedView> view = ShowView(mFilter);
    view->UI_SetLocalRectF({0.0f, 0.0f, 40.0f, 30.0f});
    ASSERT_TRUE(ProcessUntil([&] { return view->draws > 0; }));
    view->draws = 0;
    view->UI_SetDisabled(true);
    EXPECT_EQ(view->draws, 1);
    view->UI_SetDisabled(false);
    EXPECT_EQ(view->draws, 2);
}

// The platform window, of both views

template <typename View>
class PlatformWindowTest : public testing::Test {
protected:
    static boost::intrusive_ptr<View> MakeView();
};

template <>
boost::intrusive_ptr<EmbedView> PlatformWindowTest<EmbedView>::MakeView() {
    return new EmbedView(new FilterWithEditor, nullptr);
}
template <>
boost::intrusive_ptr<HostView> PlatformWindowTest<HostView>::MakeView() {
    return new HostView;
}

typedef testing::Types<EmbedView, HostView> BothViews;
TYPED_TEST_SUITE(PlatformWindowTest, BothViews, );

TYPED_TEST(PlatformWindowTest, FollowsTheViewsSizeAndKeepsItsPlace) {
    const auto view = this->MakeView();
    view->GetOSViewContainer()->UI_SetLocalRectF({1.0f, 2.0f, 3.0f, 4.0f});
    view->UI_SetLocalRectF({10.0f, 20.0f, 300.0f, 200.0f});
    EXPECT_EQ(view->GetOSViewContainer()->UI_GetLocalRectF(true), (RectF{1.0f, 2.0f, 300.0f, 200.0f}));
}

TYPED_TEST(PlatformWindowTest, FollowsOnTheKindsOfChangeThatMatterAndNoOthers) {
    const auto view = this->MakeView();
    view->UI_SetLocalRectF({0.0f, 0.0f, 300.0f, 200.0f});
    const RectF odd = {0.0f, 0.0f, 7.0f, 8.0f};
    for (const int change : {0, 1, 3}) {
        view->GetOSViewContainer()->UI_SetLocalRectF(odd);
        view->UI_NodeChanged(change);
        EXPECT_EQ(view->GetOSViewContainer()->UI_GetLocalRectF(), (RectF{0.0f, 0.0f, 300.0f, 200.0f})) << change;
    }
    for (const int change : {-1, 2, 4, 5}) {
        view->GetOSViewContainer()->UI_SetLocalRectF(odd);
        view->UI_NodeChanged(change);
        EXPECT_EQ(view->GetOSViewContainer()->UI_GetLocalRectF(), odd) << change;
    }
}

TYPED_TEST(PlatformWindowTest, ASizeThatIsTheSameIsNotSetAgain) {
    const auto view = this->MakeView();
    view->UI_SetLocalRectF({0.0f, 0.0f, 300.0f, 200.0f});
    struct Watcher : zelui::ui::UI_SubView {
        int changes = 0;
        bool UI_FillsParent() const override { return true; }
        void UI_NodeChanged(int) override { ++changes; }
    };
    const boost::intrusive_ptr<Watcher> watcher(new Watcher);
    view->GetOSViewContainer()->ChildPushBack(watcher);
    watcher->changes = 0;
    view->UI_NodeChanged(0);
    EXPECT_EQ(watcher->changes, 0);
    view->UI_SetLocalRectF({0.0f, 0.0f, 301.0f, 200.0f});
    EXPECT_EQ(watcher->changes, 1);
}

TYPED_TEST(PlatformWindowTest, WithoutAContainerChangesAreHarmless) {
    const auto view = this->MakeView();
    view->ReleaseOSViewContainer();
    EXPECT_EQ(view->GetOSViewContainer(), nullptr);
    view->UI_NodeChanged(0);
    view->UI_SetLocalRectF({0.0f, 0.0f, 300.0f, 200.0f});
    EXPECT_EQ(view->UI_GetLocalRectF(), (RectF{0.0f, 0.0f, 300.0f, 200.0f}));
}

// The host's own view

TEST(AudioFilterHostViewTest, HoldsAFrameWithTheContentWindowInIt) {
    const boost::intrusive_ptr<HostView> view(new HostView);
    const boost::intrusive_ptr<OS_Window> frame = GetOnlyWindow(*view->GetOSViewContainer());
    ASSERT_NE(frame, nullptr);
    EXPECT_TRUE(frame->UI_IsShown());
    const boost::intrusive_ptr<OS_Window> content = GetOnlyWindow(*frame);
    ASSERT_NE(content, nullptr);
    EXPECT_TRUE(content->UI_IsShown());
    EXPECT_EQ(content->ChildCount(), 0u);
}

TEST(AudioFilterHostViewTest, AContentRectIsTakenUnchanged) {
    const boost::intrusive_ptr<HostView> view(new HostView);
    view->SetContentRect({5, 6, 70, 80});
    const boost::intrusive_ptr<OS_Window> frame = GetOnlyWindow(*view->GetOSViewContainer());
    EXPECT_EQ(GetOnlyWindow(*frame)->UI_GetLocalRectF(), (RectF{5.0f, 6.0f, 70.0f, 80.0f}));
}

TEST(AudioFilterHostViewTest, ANewSizeOfTheViewBecomesTheContentsRectWithItsPlace) {
    const boost::intrusive_ptr<HostView> view(new HostView);
    view->UI_SetLocalRectF({10.0f, 20.0f, 300.5f, 200.0f});
    const boost::intrusive_ptr<OS_Window> frame = GetOnlyWindow(*view->GetOSViewContainer());
    EXPECT_EQ(GetOnlyWindow(*frame)->UI_GetLocalRectF(), (RectF{10.0f, 20.0f, 300.5f, 200.0f}));
    EXPECT_EQ(frame->UI_GetLocalRectF(), (RectF{0.0f, 0.0f, 300.5f, 200.0f}));
}

TEST(AudioFilterHostViewTest, DisablingItPaintsItAtOnceAndItDrawsNothing) {
    const boost::intrusive_ptr<HostView> view(new HostView);
    view->UI_SetLocalRectF({0.0f, 0.0f, 40.0f, 30.0f});
    zelui::qt::NodeWidget window(view);
    window.show();
    ASSERT_TRUE(ProcessUntil([&] { return view->draws > 0; }));
    view->draws = 0;
    view->UI_SetDisabled(true);
    EXPECT_EQ(view->draws, 1);
    view->GetOSViewContainer()->UI_Show(false);
    const QImage picture = window.grab().toImage();
    EXPECT_EQ(picture.pixelColor(20, 15), window.palette().color(QPalette::Disabled, QPalette::Window));
}

TEST(AudioFilterHostViewTest, OffscreenThereIsNoPlatformWindowToGiveAway) {
    const boost::intrusive_ptr<HostView> view(new HostView);
    EXPECT_EQ(view->GetContentPlatformView(), nullptr);
    zelui::qt::NodeWidget window(view);
    window.show();
    EXPECT_EQ(view->GetContentPlatformView(), nullptr);
}

}  // namespace zeltests
