#include <zelaudiofilterhostui/AudioFilterEditorView.h>

#include <algorithm>

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <QCoreApplication>
#include <QGuiApplication>
#include <QWindow>
#include <zelaudiofilterhostui/GenericAudioFilterEditorView.h>
#include <zelui/QtBridge.h>
#include <zelui/UI_OSSubViewAdapter.h>

#include "EditorDouble.h"

namespace zeltests {

using testing::ElementsAre;
using testing::IsEmpty;
using zelaudiofilterhostui::AudioFilterEditorView;
using zelaudiofilterhostui::GenericAudioFilterEditorView;
using zelcore::geom::RectF;

/// One whose host closes the editor when it hears of a certain size.
class ClosingView : public AudioFilterEditorView {
public:
    using AudioFilterEditorView::AudioFilterEditorView;
    float closesAtWidth = 0.0f;

protected:
    void UI_SizeChanged(const RectF& rect) override {
        AudioFilterEditorView::UI_SizeChanged(rect);
        if (rect.width == closesAtWidth) CloseEditor();
    }
};

/// The view of a filter with an editor double; signals are recorded in the same list as the editor's calls.
class AudioFilterEditorViewTest : public testing::Test {
protected:
    AudioFilterEditorViewTest() : mFilter(new FilterWithEditor), mEditor(new EditorDouble(mCalls)) {
        mFilter->editor = mEditor;
        mView = new AudioFilterEditorView(mFilter);
        mView->GetContentSizeChangedSignal().connect([this] { mCalls.push_back("size changed"); });
        mView->GetAdvanceFocusSignal().connect(
            [this](bool forward) { mCalls.push_back(forward ? "advance forward" : "advance backward"); });
    }

    template <typename T>
    T* GetContent() {
        return mView->ChildCount() == 1 ? dynamic_cast<T*>(mView->ChildAt(0).get()) : nullptr;
    }
    bool ShowsEmbeddedEditor() { return GetContent<zelui::ui::UI_OSSubViewAdapter>() != nullptr; }
    bool ShowsGenericEditor() { return GetContent<GenericAudioFilterEditorView>() != nullptr; }
    /// As a window manager does, or the user.
    static void MoveToScreen(QWidget& window, int screen) {
        window.windowHandle()->setScreen(QGuiApplication::screens().at(screen));
        QCoreApplication::processEvents();
    }
    void OpenAndForget() {
        mView->OpenEditor();
        mCalls.clear();
    }

    std::vector<std::string> mCalls;
    boost::intrusive_ptr<FilterWithEditor> mFilter;
    boost::intrusive_ptr<EditorDouble> mEditor;
    boost::intrusive_ptr<AudioFilterEditorView> mView;
};

// Opening and closing

TEST_F(AudioFilterEditorViewTest, ANewViewIsClosedAndAnswersFalseToEverything) {
    EXPECT_EQ(mView->ChildCount(), 0u);
    EXPECT_FALSE(mView->CanResizeContent());
    EXPECT_FALSE(mView->CanScrollContent());
    EXPECT_FALSE(mView->WantsToDispatchKeyboardFocus());
    EXPECT_FALSE(mView->DispatchKeyboardFocus(true));
    EXPECT_FALSE(mView->DispatchCurrentFocus());
    EXPECT_FALSE(mView->UI_WantsKeyboardFocus());
    EXPECT_FALSE(mView->UI_WantsKeyboardFocusFromAdvance());
    EXPECT_THAT(mCalls, IsEmpty());
}

TEST_F(AudioFilterEditorViewTest, OpeningEmbedsThePluginsEditorAndTakesItsSize) {
    mView->UI_SetLocalRectF({10.0f, 20.0f, 1.0f, 1.0f});
    mView->OpenEditor();
    EXPECT_THAT(mCalls, ElementsAre("open", "rect"));
    ASSERT_TRUE(ShowsEmbeddedEditor());
    EXPECT_TRUE(mView->ChildAt(0)->UI_IsShown());
    EXPECT_EQ(mView->ChildAt(0)->UI_GetLocalRectF(), (RectF{0.0f, 0.0f, 300.0f, 200.0f}));
    EXPECT_EQ(mView->UI_GetLocalRectF(), (RectF{10.0f, 20.0f, 300.0f, 200.0f}));
    EXPECT_TRUE(mView->WantsToDispatchKeyboardFocus());
    EXPECT_FALSE(mView->CanScrollContent());
    EXPECT_FALSE(mView->CanResizeContent());
    EXPECT_TRUE(mView->UI_WantsKeyboardFocus());
    EXPECT_TRUE(mView->UI_WantsKeyboardFocusFromAdvance());
}

TEST_F(AudioFilterEditorViewTest, ClosingClosesThePluginsEditorAndTakesItsPlaceAway) {
    OpenAndForget();
    mView->CloseEditor();
    EXPECT_THAT(mCalls, ElementsAre("close"));
    EXPECT_EQ(mView->ChildCount(), 0u);
    mView->CloseEditor();
    EXPECT_THAT(mCalls, ElementsAre("close"));
}

TEST_F(AudioFilterEditorViewTest, AClosedViewKeepsItsEditorAndItsFocusConnection) {
    OpenAndForget();
    mView->CloseEditor();
    mCalls.clear();
    EXPECT_TRUE(mView->WantsToDispatchKeyboardFocus());
    EXPECT_TRUE(mView->UI_WantsKeyboardFocus());
    EXPECT_TRUE(mView->DispatchKeyboardFocus(true));
    mEditor->GetAdvanceFocusSignal()(true);
    mEditor->GetContentSizeChangedSignal()();
    EXPECT_THAT(mCalls, ElementsAre("focus forward", "advance forward"));
}

TEST_F(AudioFilterEditorViewTest, OpenedAgainItEmbedsTheEditorAnewAndIsConnectedOnce) {
    OpenAndForget();
    mView->CloseEditor();
    mView->OpenEditor();
    EXPECT_THAT(mCalls, ElementsAre("close", "open", "rect"));
    mCalls.clear();
    mEditor->GetAdvanceFocusSignal()(false);
    EXPECT_THAT(mCalls, ElementsAre("advance backward"));
}

TEST_F(AudioFilterEditorViewTest, OpenedTwiceTheEditorIsOpenInOnePlaceOnly) {
    OpenAndForget();
    mView->OpenEditor();
    EXPECT_THAT(mCalls, ElementsAre("close", "open", "rect"));
    EXPECT_EQ(mView->ChildCount(), 1u);
}

TEST_F(AudioFilterEditorViewTest, AFilterWithoutAnEditorGetsAGenericOneThatStaysWhenItIsClosed) {
    mFilter->hasEditor = false;
    mView->OpenEditor();
    ASSERT_TRUE(ShowsGenericEditor());
    EXPECT_TRUE(mView->ChildAt(0)->UI_IsShown());
    EXPECT_TRUE(mView->CanScrollContent());
    EXPECT_FALSE(mView->CanResizeContent());
    EXPECT_FALSE(mView->WantsToDispatchKeyboardFocus());
    EXPECT_FALSE(mView->UI_WantsKeyboardFocus());
    EXPECT_EQ(mView->UI_GetLocalRectF(), (RectF{0.0f, 0.0f, 380.0f, 44.0f}));
    const boost::intrusive_ptr<zelui::ui::UI_Node> content = mView->ChildAt(0);
    mView->CloseEditor();
    EXPECT_EQ(mView->ChildAt(0), content);
    mView->OpenEditor();
    EXPECT_EQ(mView->ChildCount(), 1u);
    EXPECT_EQ(mView->ChildAt(0), content);
    EXPECT_THAT(mCalls, IsEmpty());
}

TEST_F(AudioFilterEditorViewTest, AnEditorThatThrowsWhenOpenedLeavesTheViewAsItWas) {
    mEditor->throwsWhenOpened = true;
    EXPECT_THROW(mView->OpenEditor(), std::runtime_error);
    EXPECT_EQ(mView->ChildCount(), 0u);
    EXPECT_FALSE(mView->WantsToDispatchKeyboardFocus());
    EXPECT_THAT(mCalls, ElementsAre("open"));
    mEditor->throwsWhenOpened = false;
    mView->OpenEditor();
    EXPECT_TRUE(ShowsEmbeddedEditor());
}

TEST_F(AudioFilterEditorViewTest, AnEditorWithoutSizeGivesAViewWithoutSize) {
    mEditor->rect = {};
    mView->OpenEditor();
    EXPECT_EQ(mView->UI_GetLocalRectF(), (RectF{0.0f, 0.0f, 0.0f, 0.0f}));
    mView->CloseEditor();
}

TEST_F(AudioFilterEditorViewTest, TheEndOfTheViewClosesTheEditor) {
    OpenAndForget();
    mFilter->editor = nullptr;
    mEditor.reset();
    mView.reset();
    EXPECT_THAT(mCalls, ElementsAre("close", "editor gone"));
    EXPECT_EQ(mFilter->GetRefCount(), 1);
}

// Size

TEST_F(AudioFilterEditorViewTest, ANewSizeOfTheEditorBecomesTheViewsAndIsToldOnce) {
    mView->UI_SetLocalRectF({10.0f, 20.0f, 1.0f, 1.0f});
    OpenAndForget();
    mEditor->rect = {0, 0, 400, 250};
    mEditor->GetContentSizeChangedSignal()();
    EXPECT_THAT(mCalls, ElementsAre("rect", "size changed"));
    EXPECT_EQ(mView->UI_GetLocalRectF(), (RectF{10.0f, 20.0f, 400.0f, 250.0f}));
    EXPECT_EQ(mView->ChildAt(0)->UI_GetLocalRectF(), (RectF{0.0f, 0.0f, 400.0f, 250.0f}));
}

TEST_F(AudioFilterEditorViewTest, ASizeThatIsTheSameIsNotTold) {
    OpenAndForget();
    mEditor->GetContentSizeChangedSignal()();
    EXPECT_THAT(mCalls, ElementsAre("rect"));
}

TEST_F(AudioFilterEditorViewTest, OneSideThatChangesIsAChange) {
    OpenAndForget();
    mEditor->rect = {0, 0, 300, 201};
    mEditor->GetContentSizeChangedSignal()();
    EXPECT_THAT(mCalls, ElementsAre("rect", "size changed"));
}

TEST_F(AudioFilterEditorViewTest, ASizeNotificationWithinAnotherIsIgnored) {
    OpenAndForget();
    mEditor->rect = {0, 0, 400, 250};
    // The plug-in notifies while it is asked, and the host's answer makes it notify again.
    mEditor->onRect = [this] { mEditor->GetContentSizeChangedSignal()(); };
    mView->GetContentSizeChangedSignal().connect([this] {
        mEditor->rect = {0, 0, 500, 300};
        mEditor->GetContentSizeChangedSignal()();
    });
    mEditor->GetContentSizeChangedSignal()();
    EXPECT_THAT(mCalls, ElementsAre("rect", "size changed"));
    EXPECT_EQ(mView->UI_GetLocalRectF(), (RectF{0.0f, 0.0f, 400.0f, 250.0f}));
}

TEST_F(AudioFilterEditorViewTest, AfterAListenerThrewSizesAreFollowedAgain) {
    OpenAndForget();
    boost::signals::scoped_connection connection =
        mView->GetContentSizeChangedSignal().connect([] { throw std::runtime_error("the host fails"); });
    mEditor->rect = {0, 0, 400, 250};
    EXPECT_THROW(mEditor->GetContentSizeChangedSignal()(), std::runtime_error);
    connection.disconnect();
    mEditor->rect = {0, 0, 500, 300};
    mEditor->GetContentSizeChangedSignal()();
    EXPECT_EQ(mView->UI_GetLocalRectF(), (RectF{0.0f, 0.0f, 500.0f, 300.0f}));
}

TEST_F(AudioFilterEditorViewTest, AnEditorWithoutAPlatformWindowHasNoContentAndItsSizesAreIgnored) {
    mEditor->usesPlatformView = false;
    mView->OpenEditor();
    EXPECT_EQ(mView->ChildCount(), 0u);
    EXPECT_FALSE(mView->WantsToDispatchKeyboardFocus());
    EXPECT_FALSE(mView->UI_WantsKeyboardFocus());
    mEditor->GetContentSizeChangedSignal()();
    EXPECT_EQ(mEditor->GetContentSizeChangedSignal().num_slots(), 1u);
    EXPECT_THAT(mCalls, IsEmpty());
    EXPECT_EQ(mView->UI_GetLocalRectF(), RectF());
    mView->CloseEditor();
    EXPECT_EQ(mEditor->GetContentSizeChangedSignal().num_slots(), 0u);
}

// Scale

TEST_F(AudioFilterEditorViewTest, AScreenWithAnotherScaleIsToldToTheOpenEditorAndItsNewSizeToTheHostOnce) {
    const boost::intrusive_ptr<AudioFilterEditorView> view = mView;
    zelui::qt::NodeWidget window(view);
    window.show();
    mEditor->keepsPixels = true;
    OpenAndForget();
    ASSERT_EQ(mView->UI_GetLocalRectF(), (RectF{0.0f, 0.0f, 300.0f, 200.0f}));
    MoveToScreen(window, 1);
    EXPECT_THAT(mEditor->scales, ElementsAre(2.0f));
    EXPECT_EQ(std::count(mCalls.begin(), mCalls.end(), "size changed"), 1);
    EXPECT_EQ(mView->UI_GetLocalRectF(), (RectF{0.0f, 0.0f, 150.0f, 100.0f}));
    MoveToScreen(window, 0);
    EXPECT_THAT(mEditor->scales, ElementsAre(2.0f, 1.0f));
    EXPECT_EQ(std::count(mCalls.begin(), mCalls.end(), "size changed"), 2);
    EXPECT_EQ(mView->UI_GetLocalRectF(), (RectF{0.0f, 0.0f, 300.0f, 200.0f}));
    mView->CloseEditor();
}

TEST_F(AudioFilterEditorViewTest, AnEditorThatKeepsItsSizeOnAnotherScreenTellsNothing) {
    const boost::intrusive_ptr<AudioFilterEditorView> view = mView;
    zelui::qt::NodeWidget window(view);
    window.show();
    OpenAndForget();
    MoveToScreen(window, 1);
    EXPECT_THAT(mEditor->scales, ElementsAre(2.0f));
    EXPECT_EQ(std::count(mCalls.begin(), mCalls.end(), "size changed"), 0);
    mView->CloseEditor();
}

TEST_F(AudioFilterEditorViewTest, AClosedEditorHearsOfTheScreensScaleWhenItIsOpened) {
    const boost::intrusive_ptr<AudioFilterEditorView> view = mView;
    zelui::qt::NodeWidget window(view);
    window.show();
    OpenAndForget();
    mView->CloseEditor();
    MoveToScreen(window, 1);
    EXPECT_THAT(mEditor->scales, IsEmpty());
    mView->OpenEditor();
    EXPECT_EQ(mEditor->scaleWhenOpened, 2.0f);
    mView->CloseEditor();
}

// Closed in the middle of being opened

TEST_F(AudioFilterEditorViewTest, AViewThatIsClosedWhileItsEditorOpensIsEmptyAndDeaf) {
    mEditor->onOpen = [this] { mView->CloseEditor(); };
    mView->OpenEditor();
    EXPECT_THAT(mCalls, ElementsAre("open", "close"));
    EXPECT_EQ(mView->ChildCount(), 0u);
    EXPECT_FALSE(mView->WantsToDispatchKeyboardFocus());
    EXPECT_EQ(mEditor->GetContentSizeChangedSignal().num_slots(), 0u);
    EXPECT_EQ(mEditor->GetAdvanceFocusSignal().num_slots(), 0u);
    mEditor->onOpen = {};
    mView->OpenEditor();
    EXPECT_TRUE(ShowsEmbeddedEditor());
    EXPECT_TRUE(mEditor->IsOpen());
}

TEST_F(AudioFilterEditorViewTest, AViewThatIsClosedWhileItAsksForTheSizeIsClosed) {
    mEditor->onRect = [this] { mView->CloseEditor(); };
    mView->OpenEditor();
    EXPECT_THAT(mCalls, ElementsAre("open", "rect", "close"));
    EXPECT_EQ(mView->ChildCount(), 0u);
    EXPECT_FALSE(mEditor->IsOpen());
}

TEST_F(AudioFilterEditorViewTest, AnEditorThatDoesNotKnowThatItWasClosedWhileItOpenedIsClosedAgain) {
    struct Ignorant : EditorDouble {
        using EditorDouble::EditorDouble;
        bool OpenView(HWND window) override {
            EditorDouble::OpenView(window);
            return true;
        }
    };
    const boost::intrusive_ptr<Ignorant> editor(new Ignorant(mCalls));
    mFilter->editor = editor;
    editor->onOpen = [this] { mView->CloseEditor(); };
    mView->OpenEditor();
    EXPECT_THAT(mCalls, ElementsAre("open", "close", "close"));
    EXPECT_EQ(mView->ChildCount(), 0u);
}

TEST_F(AudioFilterEditorViewTest, AViewThatIsOpenedWhileItsEditorOpensHoldsItOnce) {
    mEditor->onOpen = [this] {
        mEditor->onOpen = {};
        mView->OpenEditor();
    };
    mView->OpenEditor();
    EXPECT_EQ(mView->ChildCount(), 1u);
    EXPECT_TRUE(mEditor->IsOpen());
    EXPECT_EQ(std::count(mCalls.begin(), mCalls.end(), "open"), 2);
    EXPECT_EQ(std::count(mCalls.begin(), mCalls.end(), "close"), 1);
}

TEST_F(AudioFilterEditorViewTest, AViewMayBeLetGoOfWhileItsEditorOpens) {
    mEditor->onOpen = [this] { mView.reset(); };
    AudioFilterEditorView* const view = mView.get();
    view->OpenEditor();
    EXPECT_FALSE(mEditor->IsOpen());
    EXPECT_EQ(mEditor->GetContentSizeChangedSignal().num_slots(), 0u);
    EXPECT_EQ(mFilter->GetRefCount(), 1);
}

TEST_F(AudioFilterEditorViewTest, AViewThatIsClosedWhileTheFilterIsAskedForItsEditorStaysClosed) {
    for (const bool isInGetEditor : {false, true}) {
        (isInGetEditor ? mFilter->onGetEditor : mFilter->onHasEditor) = [this] { mView->CloseEditor(); };
        mView->OpenEditor();
        EXPECT_THAT(mCalls, IsEmpty()) << isInGetEditor;
        EXPECT_EQ(mView->ChildCount(), 0u) << isInGetEditor;
        EXPECT_EQ(mEditor->GetContentSizeChangedSignal().num_slots(), 0u) << isInGetEditor;
    }
    mView->OpenEditor();
    EXPECT_TRUE(mEditor->IsOpen());
}

TEST_F(AudioFilterEditorViewTest, AViewThatIsClosedWhileAFilterWithoutAnEditorIsAskedGetsNoGenericOne) {
    mFilter->hasEditor = false;
    mFilter->onHasEditor = [this] { mView->CloseEditor(); };
    mView->OpenEditor();
    EXPECT_EQ(mView->ChildCount(), 0u);
    EXPECT_FALSE(mView->CanScrollContent());
    mView->OpenEditor();
    EXPECT_TRUE(ShowsGenericEditor());
}

TEST_F(AudioFilterEditorViewTest, AViewThatIsOpenedWhileTheFilterIsAskedForItsEditorHoldsItOnce) {
    for (const bool isInGetEditor : {false, true}) {
        (isInGetEditor ? mFilter->onGetEditor : mFilter->onHasEditor) = [this] { mView->OpenEditor(); };
        mView->OpenEditor();
        EXPECT_THAT(mCalls, ElementsAre("open", "rect")) << isInGetEditor;
        EXPECT_EQ(mView->ChildCount(), 1u);
        EXPECT_EQ(mEditor->GetContentSizeChangedSignal().num_slots(), 1u);
        mView->CloseEditor();
        mCalls.clear();
    }
}

TEST_F(AudioFilterEditorViewTest, AViewThatIsClosedAndOpenedAgainWhileTheFilterIsAskedIsOpen) {
    mFilter->onHasEditor = [this] {
        mView->CloseEditor();
        mView->OpenEditor();
    };
    mView->OpenEditor();
    EXPECT_THAT(mCalls, ElementsAre("open", "rect"));
    EXPECT_EQ(mView->ChildCount(), 1u);
}

TEST_F(AudioFilterEditorViewTest, AViewThatIsOpenedAnewWhileItClosesStaysOpen) {
    OpenAndForget();
    mFilter->onHasEditor = [this] { mView->OpenEditor(); };
    mView->CloseEditor();
    EXPECT_THAT(mCalls, ElementsAre("close", "open", "rect"));
    EXPECT_TRUE(ShowsEmbeddedEditor());
    EXPECT_TRUE(mEditor->IsOpen());
}

TEST_F(AudioFilterEditorViewTest, AViewThatIsClosedWhileTheEditorBeforeClosesStaysClosed) {
    OpenAndForget();
    mEditor->onClose = [this] {
        mEditor->onClose = {};
        mView->CloseEditor();
    };
    mView->OpenEditor();
    EXPECT_THAT(mCalls, ElementsAre("close"));
    EXPECT_EQ(mView->ChildCount(), 0u);
}

TEST_F(AudioFilterEditorViewTest, OpeningOneViewDoesNotKeepAnotherFromIt) {
    const boost::intrusive_ptr<AudioFilterEditorView> other(new AudioFilterEditorView(mFilter));
    mFilter->onHasEditor = [&other] { other->CloseEditor(); };
    mView->OpenEditor();
    EXPECT_TRUE(ShowsEmbeddedEditor());
}

TEST_F(AudioFilterEditorViewTest, AFilterThatHasAnEditorButMakesNoneShowsNothingAndIsAskedAgainTheNextTime) {
    mFilter->editor = nullptr;
    mView->OpenEditor();
    EXPECT_EQ(mView->ChildCount(), 0u) << "no generic editor either: the filter has one of its own";
    EXPECT_EQ(mView->UI_GetLocalRectF(true), RectF());
    EXPECT_FALSE(mView->CanScrollContent());
    EXPECT_FALSE(mView->WantsToDispatchKeyboardFocus());
    EXPECT_FALSE(mView->DispatchKeyboardFocus(true));
    EXPECT_FALSE(mView->DispatchCurrentFocus());
    EXPECT_FALSE(mView->UI_WantsKeyboardFocus());
    EXPECT_THAT(mCalls, IsEmpty());
    mView->CloseEditor();
    mFilter->editor = mEditor;
    mView->OpenEditor();
    EXPECT_TRUE(ShowsEmbeddedEditor());
}

// Keyboard

TEST_F(AudioFilterEditorViewTest, FocusIsPassedToTheEditorInItsDirection) {
    OpenAndForget();
    EXPECT_TRUE(mView->DispatchKeyboardFocus(true));
    EXPECT_TRUE(mView->DispatchKeyboardFocus(false));
    EXPECT_TRUE(mView->DispatchCurrentFocus());
    mEditor->takesFocus = false;
    EXPECT_FALSE(mView->DispatchKeyboardFocus(true));
    EXPECT_FALSE(mView->DispatchCurrentFocus());
    EXPECT_THAT(mCalls,
                ElementsAre("focus forward", "focus backward", "current focus", "focus forward", "current focus"));
}

TEST_F(AudioFilterEditorViewTest, TheEditorsAdvanceIsPassedOnUnchanged) {
    OpenAndForget();
    mEditor->GetAdvanceFocusSignal()(true);
    mEditor->GetAdvanceFocusSignal()(false);
    EXPECT_THAT(mCalls, ElementsAre("advance forward", "advance backward"));
}

TEST_F(AudioFilterEditorViewTest, AKeyGoesToTheEditorAndComesBackWhenItIsNotUsed) {
    using zelui::ui::KeyboardEvent;
    const KeyboardEvent down(KeyboardEvent::kKeyDown, 65, KeyboardEvent::kShift, zelcore::utility::AsciiToUTF16("A"),
                             false);
    EXPECT_FALSE(mView->UI_DoKeyboardEvent(down));
    OpenAndForget();
    EXPECT_FALSE(mView->UI_DoKeyboardEvent(down));
    mEditor->usesKeys = true;
    EXPECT_TRUE(mView->UI_DoKeyboardEvent(KeyboardEvent(KeyboardEvent::kKeyUp, 13, 0, {}, false)));
    // Of a character of two code units half would be another character.
    EXPECT_TRUE(mView->UI_DoKeyboardEvent(
        KeyboardEvent(KeyboardEvent::kKeyDown, 0, 0, zelcore::utility::UTF8to16("\xF0\x9F\x8E\xB5"), false)));
    EXPECT_THAT(mCalls, ElementsAre("down 65 1 65", "up 13 0 0", "down 0 0 0"));
}

TEST_F(AudioFilterEditorViewTest, FocusThatIsLeftOverFromAnotherNodeIsNotTaken) {
    const boost::intrusive_ptr<AudioFilterEditorView> view = mView;
    zelui::qt::NodeWidget window(view);
    window.show();
    mView->OpenEditor();
    ASSERT_TRUE(mView->UI_WantsKeyboardFocus());
    EXPECT_FALSE(mView->UI_GainKeyboardFocus(static_cast<zelui::ui::FocusChangeReason>(5)));
    EXPECT_FALSE(mView->UI_HasKeyboardFocus(true));
    for (const int reason : {0, 1, 2, 3, 4}) {
        EXPECT_TRUE(mView->UI_GainKeyboardFocus(static_cast<zelui::ui::FocusChangeReason>(reason))) << reason;
    }
    EXPECT_TRUE(mView->UI_HasKeyboardFocus(false));
    mView->CloseEditor();
}

// The view's end in the middle of something

TEST_F(AudioFilterEditorViewTest, AListenerMayLetGoOfTheViewWhenItsSizeChanges) {
    OpenAndForget();
    mView->GetContentSizeChangedSignal().connect([this] { mView.reset(); });
    mEditor->rect = {0, 0, 400, 250};
    mEditor->GetContentSizeChangedSignal()();
    EXPECT_EQ(mView, nullptr);
    EXPECT_THAT(mCalls, ElementsAre("rect", "size changed", "close"));
}

TEST_F(AudioFilterEditorViewTest, AViewThatIsClosedWhileTheEditorIsAskedForItsNewSizeTellsNothing) {
    OpenAndForget();
    mEditor->rect = {0, 0, 400, 250};
    mEditor->onRect = [this] { mView->CloseEditor(); };
    mEditor->GetContentSizeChangedSignal()();
    EXPECT_THAT(mCalls, ElementsAre("rect", "close"));
    EXPECT_EQ(mView->ChildCount(), 0u);
    EXPECT_EQ(mView->UI_GetLocalRectF(), (RectF{0.0f, 0.0f, 300.0f, 200.0f}));
}

TEST_F(AudioFilterEditorViewTest, AViewThatIsReopenedWhileTheEditorIsAskedForItsNewSizeHasIt) {
    OpenAndForget();
    mEditor->rect = {0, 0, 400, 250};
    mEditor->onRect = [this] {
        mEditor->onRect = {};
        mView->CloseEditor();
        mView->OpenEditor();
    };
    mEditor->GetContentSizeChangedSignal()();
    EXPECT_THAT(mCalls, ElementsAre("rect", "close", "open", "rect"));
    EXPECT_EQ(mView->UI_GetLocalRectF(), (RectF{0.0f, 0.0f, 400.0f, 250.0f}));
    EXPECT_EQ(mView->ChildCount(), 1u);
}

TEST_F(AudioFilterEditorViewTest, AHostMayCloseTheEditorWhereItHearsOfTheViewsSize) {
    const boost::intrusive_ptr<ClosingView> view(new ClosingView(mFilter));
    mView = view;
    mView->GetContentSizeChangedSignal().connect([this] { mCalls.push_back("size changed"); });
    view->closesAtWidth = 300.0f;
    mView->OpenEditor();
    EXPECT_THAT(mCalls, ElementsAre("open", "rect", "close"));
    EXPECT_EQ(mView->ChildCount(), 0u);
    view->closesAtWidth = 400.0f;
    OpenAndForget();
    mEditor->rect = {0, 0, 400, 250};
    mEditor->GetContentSizeChangedSignal()();
    EXPECT_THAT(mCalls, ElementsAre("rect", "close"));
    EXPECT_EQ(mView->ChildCount(), 0u);
}

TEST_F(AudioFilterEditorViewTest, ASecondViewOfAFilterTakesTheEditorAwayFromTheFirst) {
    OpenAndForget();
    const boost::intrusive_ptr<AudioFilterEditorView> second(new AudioFilterEditorView(mFilter));
    second->OpenEditor();
    EXPECT_THAT(mCalls, ElementsAre("open", "rect"));
    mView->CloseEditor();
    EXPECT_THAT(mCalls, ElementsAre("open", "rect"));
    EXPECT_TRUE(mEditor->IsOpen());
    mView->OpenEditor();
    second->CloseEditor();
    EXPECT_THAT(mCalls, ElementsAre("open", "rect", "open", "rect"));
    mView->CloseEditor();
    EXPECT_FALSE(mEditor->IsOpen());
}

TEST_F(AudioFilterEditorViewTest, AListenerMayLetGoOfTheViewWhenTheFocusAdvances) {
    OpenAndForget();
    mView->GetAdvanceFocusSignal().connect([this](bool) { mView.reset(); });
    mEditor->GetAdvanceFocusSignal()(true);
    EXPECT_THAT(mCalls, ElementsAre("advance forward", "close"));
}

TEST_F(AudioFilterEditorViewTest, ClosingClosesTheEditorAlsoWhileSomebodyElseHoldsItsPlace) {
    OpenAndForget();
    const boost::intrusive_ptr<zelui::ui::UI_Node> place = mView->ChildAt(0);
    mView->CloseEditor();
    EXPECT_THAT(mCalls, ElementsAre("close"));
}

TEST_F(AudioFilterEditorViewTest, AFilterThatGetsAnEditorOfItsOwnLaterScrollsNoMore) {
    mFilter->hasEditor = false;
    mView->OpenEditor();
    ASSERT_TRUE(mView->CanScrollContent());
    mFilter->hasEditor = true;
    mView->OpenEditor();
    EXPECT_FALSE(mView->CanScrollContent());
    EXPECT_TRUE(ShowsEmbeddedEditor());
}

}  // namespace zeltests
