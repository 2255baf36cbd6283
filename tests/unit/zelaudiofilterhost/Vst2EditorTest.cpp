#include <cmath>
#include <limits>
#include <optional>
#include <thread>

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <zelaudiofilterhost/AudioFilterEditor.h>
#include <zelcore/SimpleMainLoop.h>

#include "DescribeForTest.h"
#include "EditorKeys.h"
#include "support/WaitFor.h"
#include "Vst2FilterForTest.h"

using namespace zelaudiofilterhost;
using namespace zeltests;
using testing::AllOf;
using testing::Ge;
using testing::Le;
using zelcore::geom::Rect;

namespace zelcore::geom {

void PrintTo(const Rect& rect, std::ostream* out) {
    *out << rect.left << ' ' << rect.top << ' ' << rect.width << ' ' << rect.height;
}

}  // namespace zelcore::geom

namespace {

/// Where zel_editor_modal runs the event loop, once.
constexpr float kWhileAskedForItsSize = 0.25f;
constexpr float kWhileOpening = 0.5f;
constexpr float kWhileClosing = 0.75f;

class Vst2EditorTest : public testing::Test {
protected:
    void Load(const std::string& name) {
        mFilter = MakeVst("good/" + name);
        mEditor = mFilter->GetEditor();
        ASSERT_TRUE(mEditor);
        mSizeConnection = mEditor->GetContentSizeChangedSignal().connect([this] { OnSize(); });
        mFocusConnection = mEditor->GetAdvanceFocusSignal().connect(
            [this](bool forward) { mAdvances += forward ? "forward " : "backward "; });
        Calls();
    }
    void LoadOpen(const std::string& name) {
        Load(name);
        ASSERT_TRUE(mEditor->OpenView(NoWindow()));
        mLoop.RunPending();
        Calls();
        mSizeChanges = 0;
    }
    virtual void OnSize() {
        ++mSizeChanges;
        if (mOnSize) mOnSize();
    }

    int FindParameter(const std::string& name) const {
        int index = 0;
        while (index < mFilter->GetParameterCount() && Text(mFilter->GetParameterInfo(index)->GetName()) != name) {
            ++index;
        }
        return index;
    }
    std::string Tell(const std::string& name) const {
        return Text(mFilter->GetParameterValueString(FindParameter(name)));
    }
    void Set(const std::string& name, float value) { mFilter->SetParameterValue(FindParameter(name), value); }
    /// What the plug-in was called for since this was asked last.
    std::string Calls() const { return Tell("Calls"); }
    /// Which of its rectangles zel_editor_odd has.
    void SetOddRect(int number) { Set("Rectangle", static_cast<float>(number) / 8.0f); }
    bool Press(int osCode, int modifiers = 0, unsigned short character = 0) {
        return mEditor->DoKey(osCode, modifiers, character, true);
    }

    zelcore::threads::SimpleMainLoop mLoop;
    boost::intrusive_ptr<AudioFilter> mFilter;
    boost::intrusive_ptr<AudioFilterEditor> mEditor;
    boost::signals::scoped_connection mSizeConnection;
    boost::signals::scoped_connection mFocusConnection;
    int mSizeChanges = 0;
    std::function<void()> mOnSize;
    std::string mAdvances;
};

}  // namespace

TEST_F(Vst2EditorTest, OnlyAFilterWithAnEditorHasOne) {
    const auto gain = MakeVst("good/zel_gain");
    EXPECT_FALSE(gain->HasEditor());
    EXPECT_FALSE(gain->GetEditor());
    Load("zel_editor");
    EXPECT_TRUE(mFilter->HasEditor());
    EXPECT_TRUE(mEditor->UsesPlatformView());
}

TEST_F(Vst2EditorTest, AFilterThatGivesItsEditorUpHasNoneButTheOneThatIsHeld) {
    LoadOpen("zel_editor_odd");
    Set("Editor", 0.0f);
    EXPECT_TRUE(mFilter->HasEditor());
    EXPECT_EQ(mFilter->GetEditor(), mEditor);
    mEditor.reset();
    EXPECT_EQ(Calls(), "close");
    EXPECT_FALSE(mFilter->HasEditor());
    EXPECT_FALSE(mFilter->GetEditor());
    Set("Editor", 1.0f);
    EXPECT_TRUE(mFilter->GetEditor());
}

TEST_F(Vst2EditorTest, TheEditorIsTheSameAsLongAsSomebodyHoldsIt) {
    Load("zel_editor");
    EXPECT_EQ(mFilter->GetEditor(), mEditor);
    EXPECT_EQ(mEditor->GetRefCount(), 1);
    mEditor->OpenView(NoWindow());
    mEditor.reset();
    mEditor = mFilter->GetEditor();
    EXPECT_TRUE(mEditor->OpenView(NoWindow()));
    EXPECT_EQ(Calls(), "open close open");
}

TEST_F(Vst2EditorTest, TheEditorHoldsItsFilter) {
    Load("zel_editor");
    EXPECT_EQ(mFilter->GetRefCount(), 2);
    mFilter.reset();
    EXPECT_TRUE(mEditor->OpenView(NoWindow()));
    mEditor->Idle();
    EXPECT_EQ(mEditor->GetViewRect(), (Rect{0, 0, 300, 200}));
}

TEST_F(Vst2EditorTest, TheLastReferenceClosesTheEditor) {
    LoadOpen("zel_editor");
    mEditor.reset();
    EXPECT_EQ(Calls(), "close");
    EXPECT_EQ(mFilter->GetRefCount(), 1);
}

TEST_F(Vst2EditorTest, OpeningAnOpenEditorClosesItFirst) {
    LoadOpen("zel_editor");
    EXPECT_TRUE(mEditor->OpenView(NoWindow()));
    EXPECT_EQ(Calls(), "close open");
}

TEST_F(Vst2EditorTest, ClosingAClosedEditorCallsNothing) {
    Load("zel_editor");
    mEditor->CloseView();
    EXPECT_EQ(Calls(), "");
    mEditor->OpenView(NoWindow());
    mEditor->CloseView();
    mEditor->CloseView();
    EXPECT_EQ(Calls(), "open close");
    mEditor.reset();
    EXPECT_EQ(Calls(), "");
}

TEST_F(Vst2EditorTest, ClosedInTheMiddleOfBeingOpenedItIsClosedWhenTheEffectHasReturned) {
    Load("zel_editor_modal");
    Set("Where", kWhileOpening);
    mLoop.Post([this] { mEditor->CloseView(); });
    EXPECT_FALSE(mEditor->OpenView(NoWindow()));
    EXPECT_EQ(Calls(), "open opened close");
    EXPECT_EQ(Tell("Answer"), "1") << "it asked for a size";
    EXPECT_FALSE(mEditor->DispatchCurrentFocus());
    mEditor->Idle();
    mLoop.RunPending();
    EXPECT_EQ(mSizeChanges, 0);
    EXPECT_TRUE(mEditor->OpenView(NoWindow()));
    EXPECT_EQ(Calls(), "open");
}

TEST_F(Vst2EditorTest, ClosedWhileTheEffectIsAskedForItsSizeBeforeItOpensItDoesNotOpen) {
    Load("zel_editor_modal");
    Set("Where", kWhileAskedForItsSize);
    mLoop.Post([this] { mEditor->CloseView(); });
    EXPECT_FALSE(mEditor->OpenView(NoWindow()));
    EXPECT_EQ(Calls(), "rect");
    EXPECT_TRUE(mEditor->OpenView(NoWindow()));
}

TEST_F(Vst2EditorTest, LetGoOfInTheMiddleOfBeingOpenedItIsClosedWhenTheEffectHasReturned) {
    Load("zel_editor_modal");
    Set("Where", kWhileOpening);
    mLoop.Post([this] {
        mEditor->CloseView();
        mEditor.reset();
    });
    EXPECT_FALSE(mEditor->OpenView(NoWindow()));
    EXPECT_EQ(Calls(), "open opened close");
    EXPECT_EQ(mFilter->GetRefCount(), 1);
}

TEST_F(Vst2EditorTest, OpenedInTheMiddleOfACallOfTheEffectsItDoesNotOpen) {
    Load("zel_editor_modal");
    std::optional<bool> answer;
    const auto open = [&] { answer = mEditor->OpenView(NoWindow()); };
    Set("Where", kWhileOpening);
    mLoop.Post(open);
    EXPECT_FALSE(mEditor->OpenView(NoWindow()));
    EXPECT_EQ(answer, false);
    EXPECT_EQ(Calls(), "open opened close");
    ASSERT_TRUE(mEditor->OpenView(NoWindow()));
    Set("Where", kWhileClosing);
    answer.reset();
    mLoop.Post(open);
    mEditor->CloseView();
    EXPECT_EQ(answer, false);
    EXPECT_EQ(Calls(), "open close closed");
    EXPECT_TRUE(mEditor->OpenView(NoWindow()));
}

TEST_F(Vst2EditorTest, LetGoOfInTheMiddleOfBeingClosedItStaysUntilTheEffectHasReturned) {
    LoadOpen("zel_editor_modal");
    Set("Where", kWhileClosing);
    mLoop.Post([this] { mEditor.reset(); });
    mEditor->CloseView();
    EXPECT_FALSE(mEditor);
    EXPECT_EQ(Calls(), "close closed");
    EXPECT_EQ(mFilter->GetRefCount(), 1);
}

TEST_F(Vst2EditorTest, WithoutAParentNothingHappens) {
    Load("zel_editor");
    EXPECT_FALSE(mEditor->OpenView(nullptr));
    EXPECT_EQ(Calls(), "");
    mEditor->OpenView(NoWindow());
    EXPECT_FALSE(mEditor->OpenView(nullptr));
    EXPECT_EQ(Calls(), "open");
    EXPECT_TRUE(mEditor->DispatchCurrentFocus());
}

TEST_F(Vst2EditorTest, OnlyAnOpenEditorGetsTurnsKeysAndFocus) {
    Load("zel_editor");
    for (const bool isOpen : {false, true, false}) {
        if (isOpen) {
            mEditor->OpenView(NoWindow());
        } else {
            mEditor->CloseView();
        }
        Calls();
        const int turns = std::stoi(Tell("Turns"));
        mEditor->Idle();
        EXPECT_EQ(std::stoi(Tell("Turns")), turns + (isOpen ? 1 : 0));
        EXPECT_EQ(Press('A', 0, 'a'), isOpen);
        EXPECT_EQ(Calls(), isOpen ? "down.97.0.0" : "");
        EXPECT_EQ(mEditor->DispatchKeyboardFocus(true), isOpen);
        EXPECT_EQ(mEditor->DispatchKeyboardFocus(false), isOpen);
        EXPECT_EQ(mEditor->DispatchCurrentFocus(), isOpen);
    }
    EXPECT_EQ(mAdvances, "");
}

TEST_F(Vst2EditorTest, WhatTheFormatCannotSayIsHarmless) {
    Load("zel_editor");
    for (int i = 0; i < 2; ++i) {
        mEditor->SetThemeBrightness(0.25f, true);
        mEditor->OpenView(NoWindow());
    }
    EXPECT_EQ(mEditor->GetViewRect(), (Rect{0, 0, 300, 200}));
}

TEST_F(Vst2EditorTest, SizesAreInUnitsOfTheHostWhateverItsScale) {
    Load("zel_editor");
    mEditor->SetContentScale(2.0f);
    mEditor->OpenView(NoWindow());
    EXPECT_EQ(mEditor->GetViewRect(), (Rect{0, 0, 150, 100}));
    mEditor->SetContentScale(1.25f);
    EXPECT_EQ(mEditor->GetViewRect(), (Rect{0, 0, 240, 160}));
    mEditor->SetContentScale(1.4f);
    EXPECT_EQ(mEditor->GetViewRect(), (Rect{0, 0, 215, 143})) << "rounded up: nothing is cut off";
    for (const float nonsense : {0.0f, -1.0f, 1000.0f, std::numeric_limits<float>::quiet_NaN()})
        mEditor->SetContentScale(nonsense);
    EXPECT_EQ(mEditor->GetViewRect(), (Rect{0, 0, 215, 143}));
}

TEST_F(Vst2EditorTest, AScaleThatChangesTheSizeInUnitsOfAnOpenEditorIsToldOnce) {
    LoadOpen("zel_editor");
    mEditor->SetContentScale(2.0f);
    EXPECT_EQ(mSizeChanges, 0) << "never within a call";
    for (int i = 0; i < 3; ++i) {
        mLoop.RunPending();
        EXPECT_EQ(mSizeChanges, 1);
        mEditor->Idle();
    }
    EXPECT_EQ(mEditor->GetViewRect(), (Rect{0, 0, 150, 100}));
    mEditor->SetContentScale(2.0f);
    Set("Size", 1.0f);
    mEditor->SetContentScale(4.0f);
    mLoop.RunPending();
    EXPECT_EQ(mEditor->GetViewRect(), (Rect{0, 0, 150, 100}));
    EXPECT_EQ(mSizeChanges, 1) << "twice the pixels on twice the scale are of the same size";
    mEditor->CloseView();
    mEditor->SetContentScale(1.0f);
    mLoop.RunPending();
    EXPECT_EQ(mSizeChanges, 1);
}

TEST_F(Vst2EditorTest, TheRectangleMakesSenseWhateverThePluginSays) {
    Load("zel_editor_odd");
    const std::vector<Rect> expected = {{0, 0, 120, 90},  {0, 0, 0, 0}, {100, 50, 0, 0}, {-32768, -32768, 16384, 16384},
                                        {-5, 7, 120, 90}, {0, 0, 0, 0}, {0, 0, 0, 0},    {0, 0, 120, 90},
                                        {0, 0, 10, 16384}};
    for (std::size_t i = 0; i < expected.size(); ++i) {
        SetOddRect(static_cast<int>(i));
        EXPECT_EQ(mEditor->GetViewRect(), expected[i]) << i;
    }
    EXPECT_EQ(Calls(), "");
}

TEST_F(Vst2EditorTest, AnEditorThatSaysThatItDidNotOpenIsBelievedWhenItHasNoSizeEither) {
    Load("zel_editor_odd");
    Set("Opens", 0.0f);
    for (const int failing : {1, 2, 5}) {
        SetOddRect(failing);
        EXPECT_FALSE(mEditor->OpenView(NoWindow())) << failing;
        EXPECT_EQ(Calls(), "open close") << "how far it got is not known";
        EXPECT_FALSE(mEditor->DispatchCurrentFocus());
    }
    for (const int working : {0, 4, 6}) {
        SetOddRect(working);
        EXPECT_TRUE(mEditor->OpenView(NoWindow())) << working;
        EXPECT_EQ(mEditor->GetViewRect().width, 120);
        mEditor->CloseView();
        EXPECT_EQ(Calls(), "open close");
    }
    Set("Opens", 1.0f);
    SetOddRect(1);
    EXPECT_TRUE(mEditor->OpenView(NoWindow()));
    EXPECT_EQ(mEditor->GetViewRect(), Rect());
}

TEST_F(Vst2EditorTest, AnEditorThatDoesNotOpenIsNotOpen) {
    Load("zel_editor_fails");
    EXPECT_FALSE(mEditor->OpenView(NoWindow()));
    EXPECT_EQ(Calls(), "open close");
    mEditor->Idle();
    mEditor->CloseView();
    EXPECT_EQ(Calls(), "");
    EXPECT_EQ(mEditor->GetViewRect(), Rect());
}

TEST_F(Vst2EditorTest, AnEditorWithoutAreaOpens) {
    Load("zel_editor_empty");
    EXPECT_TRUE(mEditor->OpenView(NoWindow()));
    EXPECT_EQ(mEditor->GetViewRect(), Rect());
    mEditor->Idle();
    mLoop.RunPending();
    EXPECT_EQ(mSizeChanges, 0);
    mEditor->CloseView();
    EXPECT_EQ(Calls(), "open close");
}

TEST_F(Vst2EditorTest, AnExceptionWhenItIsOpenedIsAFailure) {
    Load("zel_editor_throws");
    EXPECT_FALSE(mEditor->OpenView(NoWindow()));
    EXPECT_EQ(Calls(), "open close");
    EXPECT_FALSE(mEditor->DispatchCurrentFocus());
}

TEST_F(Vst2EditorTest, ExceptionsElsewhereHaveNoEffect) {
    Load("zel_editor_throws");
    for (const float where : {0.25f, 0.5f, 0.75f, 1.0f}) {
        Set("Where", where);
        EXPECT_TRUE(mEditor->OpenView(NoWindow()));
        mEditor->Idle();
        EXPECT_EQ(mEditor->GetViewRect(), where == 0.25f ? Rect() : (Rect{0, 0, 120, 90}));
        EXPECT_EQ(Press('B', 0, 'b'), where != 1.0f);
        mEditor->CloseView();
        EXPECT_EQ(Calls(), "open idle down.98.0.0 close");
        EXPECT_FALSE(mEditor->DispatchCurrentFocus());
    }
}

TEST_F(Vst2EditorTest, TheHostSaysThatItSizesWindows) {
    Load("zel_editor_odd");
    EXPECT_EQ(Tell("Host sizes"), "1");
}

TEST_F(Vst2EditorTest, ASizeThatThePluginAsksForIsToldOnceFromTheMainLoop) {
    LoadOpen("zel_editor");
    Set("Size", 0.5f);
    EXPECT_EQ(Tell("Answer"), "1");
    EXPECT_EQ(mSizeChanges, 0) << "never within a call";
    EXPECT_EQ(mEditor->GetViewRect(), (Rect{0, 0, 450, 300}));
    for (int i = 0; i < 3; ++i) {
        mLoop.RunPending();
        EXPECT_EQ(mSizeChanges, 1);
        mEditor->Idle();
    }
}

TEST_F(Vst2EditorTest, ASizeThatIsTheSameIsNotTold) {
    LoadOpen("zel_editor");
    Set("Size", 0.0f);
    EXPECT_EQ(Tell("Answer"), "1");
    mEditor->Idle();
    mLoop.RunPending();
    EXPECT_EQ(mSizeChanges, 0);
}

TEST_F(Vst2EditorTest, ASizeThatIsThereAndGoneIsNotTold) {
    LoadOpen("zel_editor");
    Set("Size", 1.0f);
    Set("Size", 0.0f);
    mLoop.RunPending();
    EXPECT_EQ(mSizeChanges, 0);
}

TEST_F(Vst2EditorTest, ManyChangesInOneGoAreToldOnce) {
    LoadOpen("zel_editor");
    for (int i = 0; i <= 1000; ++i) Set("Size", static_cast<float>(i) / 1000.0f);
    mLoop.RunPending();
    EXPECT_EQ(mSizeChanges, 1);
    EXPECT_EQ(mEditor->GetViewRect(), (Rect{0, 0, 600, 400}));
}

TEST_F(Vst2EditorTest, ASecondChangeIsToldAfterTheNextTurn) {
    LoadOpen("zel_editor");
    Set("Size", 0.5f);
    mLoop.RunPending();
    Set("Size", 1.0f);
    mLoop.RunPending();
    EXPECT_EQ(mSizeChanges, 1);
    mEditor->Idle();
    mLoop.RunPending();
    EXPECT_EQ(mSizeChanges, 2);
}

TEST_F(Vst2EditorTest, ASizeAskedForOnAnotherThreadIsToldOnTheMainThread) {
    LoadOpen("zel_editor");
    std::optional<std::thread::id> thread;
    mOnSize = [&thread] { thread = std::this_thread::get_id(); };
    Set("Size elsewhere", 1.0f);
    EXPECT_EQ(Tell("Answer"), "1");
    mLoop.RunPending();
    EXPECT_EQ(thread, std::this_thread::get_id());
    EXPECT_EQ(mSizeChanges, 1);
}

TEST_F(Vst2EditorTest, ASizeAskedForCountsOverARectangleThatStaysBehindUntilTheEditorIsClosed) {
    LoadOpen("zel_editor");
    Set("Size elsewhere", 1.0f);
    mLoop.RunPending();
    for (int i = 0; i < 3; ++i) {
        mEditor->Idle();
        mLoop.RunPending();
        EXPECT_EQ(mEditor->GetViewRect(), (Rect{0, 0, 600, 400}));
    }
    EXPECT_EQ(mSizeChanges, 1);
    mEditor->CloseView();
    EXPECT_EQ(mEditor->GetViewRect(), (Rect{0, 0, 300, 200}));
}

TEST_F(Vst2EditorTest, ARectangleThatChangesLaterCountsOverASizeAskedForBefore) {
    LoadOpen("zel_editor");
    Set("Size elsewhere", 1.0f);
    EXPECT_EQ(mEditor->GetViewRect().width, 600);
    mEditor->CloseView();
    Set("Size", 0.5f);
    EXPECT_EQ(mEditor->GetViewRect(), (Rect{0, 0, 450, 300}));
}

TEST_F(Vst2EditorTest, ARectangleThatChangesWithoutAWordIsToldAfterATurn) {
    LoadOpen("zel_editor_odd");
    SetOddRect(7);
    for (int turn = 1; turn <= 5; ++turn) {
        mEditor->Idle();
        EXPECT_EQ(mSizeChanges, turn - 1);
        mLoop.RunPending();
        EXPECT_EQ(mSizeChanges, turn);
        EXPECT_EQ(mEditor->GetViewRect().width, 120 + turn);
    }
}

TEST_F(Vst2EditorTest, ASizeKnownOnlyAfterOpeningIsTold) {
    Load("zel_editor_odd");
    SetOddRect(6);
    EXPECT_TRUE(mEditor->OpenView(NoWindow()));
    EXPECT_EQ(mSizeChanges, 0);
    mLoop.RunPending();
    EXPECT_EQ(mSizeChanges, 1);
}

TEST_F(Vst2EditorTest, APluginThatAnswersEverythingWithAnotherSizeHangsNobody) {
    Load("zel_editor_restless");
    int depth = 0;
    mOnSize = [&] {
        EXPECT_EQ(depth, 0);
        ++depth;
        const Rect rect = mEditor->GetViewRect();
        EXPECT_THAT(rect.width, AllOf(Ge(100), Le(364)));
        EXPECT_THAT(rect.height, AllOf(Ge(200), Le(464)));
        mEditor->Idle();
        mLoop.RunPending();
        --depth;
    };
    ASSERT_TRUE(mEditor->OpenView(NoWindow()));
    constexpr int kTurns = 50;
    for (int turn = 0; turn < kTurns; ++turn) {
        mEditor->Idle();
        mLoop.RunPending();
        mLoop.RunPending();
    }
    // Each notification gives the plug-in a turn of its own here.
    EXPECT_THAT(mSizeChanges, AllOf(Ge(kTurns), Le(2 * kTurns + 2)));
    const int before = mSizeChanges;
    mOnSize = [this] { mEditor->GetViewRect(); };
    for (int round = 0; round < 50; ++round) mLoop.RunPending();
    EXPECT_LE(mSizeChanges, before + 1) << "without turns it comes to rest";
}

TEST_F(Vst2EditorTest, APluginMayAskForSizesFromItsOwnThreadAtAnyTime) {
    for (int round = 0; round < 10; ++round) {
        Load("zel_editor_chatty");
        for (int opening = 0; opening < 3; ++opening) {
            const int granted = std::stoi(Tell("Granted"));
            mSizeChanges = 0;
            ASSERT_TRUE(mEditor->OpenView(NoWindow()));
            EXPECT_TRUE(WaitFor([&] { return std::stoi(Tell("Granted")) > granted + 10; }));
            constexpr int kTurns = 5;
            for (int turn = 0; turn < kTurns; ++turn) {
                mEditor->Idle();
                for (int i = 0; i < 3; ++i) mLoop.RunPending();
                EXPECT_EQ(mEditor->GetViewRect().height, 300);
            }
            EXPECT_LE(mSizeChanges, kTurns + 1);
            if (opening < 2) mEditor->CloseView();
        }
        mFilter.reset();
        mEditor.reset();
    }
}

TEST_F(Vst2EditorTest, SizesAreRefusedWhileClosingAndWhenClosedAndAtTheFiltersEnd) {
    LoadOpen("zel_editor_restless");
    mEditor->CloseView();
    EXPECT_EQ(Tell("Answer at the end"), "0");
    mLoop.RunPending();
    EXPECT_EQ(mSizeChanges, 0);
    mEditor->OpenView(NoWindow());
    mEditor->Idle();
    mFilter.reset();
    mEditor.reset();
    mLoop.RunPending();
    EXPECT_EQ(mSizeChanges, 0);
}

TEST_F(Vst2EditorTest, WhatIsUnderWayWhenTheEditorClosesIsNotTold) {
    LoadOpen("zel_editor");
    Set("Size", 1.0f);
    mEditor->CloseView();
    mLoop.RunPending();
    EXPECT_EQ(mSizeChanges, 0);
    Set("Size", 0.0f);
    EXPECT_EQ(Tell("Answer"), "0");
    mEditor->OpenView(NoWindow());
    Set("Size", 1.0f);
    mEditor->OpenView(NoWindow());
    mLoop.RunPending();
    EXPECT_EQ(mSizeChanges, 0) << "it has had that size since it was opened again";
}

TEST_F(Vst2EditorTest, ASizeThatNobodyTookIsForgottenWhenTheEditorCloses) {
    LoadOpen("zel_editor");
    Set("Size elsewhere", 1.0f);
    mEditor->CloseView();
    mEditor->OpenView(NoWindow());
    EXPECT_EQ(mEditor->GetViewRect(), (Rect{0, 0, 300, 200}));
}

TEST_F(Vst2EditorTest, WhatIsUnderWayWhenTheEditorGoesReachesNobody) {
    LoadOpen("zel_editor");
    Set("Size", 1.0f);
    mEditor.reset();
    mLoop.RunPending();
    EXPECT_EQ(mSizeChanges, 0);
    EXPECT_EQ(Calls(), "close");
}

TEST_F(Vst2EditorTest, TheEditorMayBeClosedOrLetGoOfWhileItTellsItsSize) {
    LoadOpen("zel_editor");
    mOnSize = [this] { mEditor->CloseView(); };
    Set("Size", 1.0f);
    mLoop.RunPending();
    EXPECT_EQ(Calls(), "close");
    mEditor->OpenView(NoWindow());
    mOnSize = [this] { mEditor.reset(); };
    Set("Size", 0.5f);
    mLoop.RunPending();
    EXPECT_EQ(Calls(), "open close");
    EXPECT_EQ(mSizeChanges, 2);
}

TEST_F(Vst2EditorTest, AnExceptionOfAListenerLeavesTheEditorUsable) {
    LoadOpen("zel_editor");
    mOnSize = [] { throw std::runtime_error("a listener's"); };
    Set("Size", 1.0f);
    EXPECT_THROW(mLoop.RunPending(), std::runtime_error);
    mOnSize = {};
    mEditor->Idle();
    Set("Size", 0.5f);
    mLoop.RunPending();
    EXPECT_EQ(mSizeChanges, 2);
}

TEST_F(Vst2EditorTest, TwoEditorsOfOneModuleAreIndependent) {
    LoadOpen("zel_editor");
    const auto other = MakeVst("good/zel_editor");
    const auto otherEditor = other->GetEditor();
    ASSERT_TRUE(otherEditor->OpenView(NoWindow()));
    Set("Size", 1.0f);
    EXPECT_EQ(otherEditor->GetViewRect(), (Rect{0, 0, 300, 200}));
    otherEditor->CloseView();
    mLoop.RunPending();
    EXPECT_EQ(mSizeChanges, 1);
}

TEST_F(Vst2EditorTest, KeysReachThePluginAndItSaysWhichItUsed) {
    LoadOpen("zel_editor");
    EXPECT_TRUE(Press('A', 0, 'a'));
    EXPECT_TRUE(mEditor->DoKey('A', 0, 'a', false));
    EXPECT_FALSE(Press('B', kShift, 'B'));
    EXPECT_TRUE(Press(0x1B, 0, 27));
    EXPECT_EQ(Calls(), "down.97.0.0 up.97.0.0 down.66.0.1 down.27.6.0");
}

TEST_F(Vst2EditorTest, KeysAreTranslated) {
    LoadOpen("zel_editor");
    const std::vector<std::pair<int, int>> keys = {
        {0x08, 1},  {0x0C, 3},  {0x0D, 4},  {0x10, 54}, {0x11, 55}, {0x12, 56}, {0x13, 5},  {0x20, 7},  {0x21, 15},
        {0x22, 16}, {0x23, 9},  {0x24, 10}, {0x25, 11}, {0x26, 12}, {0x27, 13}, {0x28, 14}, {0x29, 17}, {0x2A, 18},
        {0x2C, 20}, {0x2D, 21}, {0x2E, 22}, {0x2F, 23}, {0x60, 24}, {0x69, 33}, {0x6A, 34}, {0x6B, 35}, {0x6C, 36},
        {0x6D, 37}, {0x6E, 38}, {0x6F, 39}, {0x70, 40}, {0x7B, 51}, {0x90, 52}, {0x91, 53}};
    for (const auto& [osCode, virtualKey] : keys) {
        EXPECT_FALSE(Press(osCode));
        EXPECT_EQ(Calls(), "down.0." + std::to_string(virtualKey) + ".0") << osCode;
    }
}

TEST_F(Vst2EditorTest, ModifiersAreTranslatedAndALetterThatTypesNothingIsStillTold) {
    LoadOpen("zel_editor");
    Press('Z', kControl);
    Press('Z', kShift | kControl | kAlt);
    Press('7', kAlt);
    EXPECT_EQ(Calls(), "down.122.0.8 down.122.0.11 down.55.0.2");
}

TEST_F(Vst2EditorTest, AKeyThatThePluginCannotKnowIsNotPassedOn) {
    LoadOpen("zel_editor");
    for (const int osCode : {0, -1, 0x5B, 0x7C, 0xFFFF, 1 << 30}) EXPECT_FALSE(Press(osCode));
    EXPECT_EQ(Calls(), "");
}

TEST_F(Vst2EditorTest, ATabThatThePluginDoesNotUseMovesTheFocusOn) {
    LoadOpen("zel_editor");
    EXPECT_TRUE(Press(kTab, 0, '\t'));
    EXPECT_EQ(mAdvances, "forward ");
    EXPECT_TRUE(Press(kTab, kShift));
    EXPECT_EQ(mAdvances, "forward backward ");
    EXPECT_FALSE(mEditor->DoKey(kTab, 0, '\t', false)) << "once a key";
    EXPECT_FALSE(Press(kTab, kControl)) << "the host's";
    EXPECT_FALSE(Press(kTab, kAlt)) << "the system's";
    EXPECT_EQ(mAdvances, "forward backward ");
    EXPECT_EQ(Calls(), "down.9.2.0 down.0.2.1 up.9.2.0 down.0.2.8 down.0.2.2");
}

TEST_F(Vst2EditorTest, ATabThatThePluginUsesStays) {
    Load("zel_editor_throws");
    Set("Where", 0.5f);
    ASSERT_TRUE(mEditor->OpenView(NoWindow()));
    EXPECT_TRUE(Press(kTab, 0, '\t'));
    EXPECT_EQ(mAdvances, "");
}

TEST_F(Vst2EditorTest, TheEditorMayBeLetGoOfWhileItMovesTheFocusOn) {
    LoadOpen("zel_editor");
    mFocusConnection = mEditor->GetAdvanceFocusSignal().connect([this](bool) { mEditor.reset(); });
    EXPECT_TRUE(Press(kTab));
    EXPECT_EQ(Calls(), "down.0.2.0 close");
}
