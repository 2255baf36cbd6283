#include <zelaudiofilterhostui/AudioFilterEditorView.h>

#include <algorithm>

#include <gmock/gmock.h>
#include <gtest/gtest.h>
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

TEST_F(AudioFilterEditorViewTest, AnEditorThatCannotBeMadeLeavesTheViewEmpty) {
    mFilter->editor = nullptr;
    mView->OpenEditor();
    EXPECT_EQ(mView->ChildCount(), 0u);
    EXPECT_FALSE(mView->UI_WantsKeyboardFocus());
    mView->CloseEditor();
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
