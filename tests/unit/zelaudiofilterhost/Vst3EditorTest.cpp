#include <algorithm>
#include <cmath>
#include <functional>
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
#include "Vst3FilterForTest.h"

using namespace zelaudiofilterhost;
using namespace zeltests;
using testing::AllOf;
using testing::Ge;
using testing::Le;
using zelcore::geom::Rect;

namespace {

class Vst3EditorTest : public testing::Test {
protected:
    void Load(const std::string& name) {
        mFilter = MakeVst3("good/" + name);
        mEditor = mFilter->GetEditor();
        ASSERT_TRUE(mEditor);
        mSizeConnection = mEditor->GetContentSizeChangedSignal().connect([this] {
            ++mSizeChanges;
            if (mOnSize) mOnSize();
        });
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
    int Count(const std::string& name) const { return std::stoi(Tell(name)); }
    void Set(const std::string& name, float value) { mFilter->SetParameterValue(FindParameter(name), value); }
    /// Sets a parameter that stands at one of `count` steps.
    void SetStep(const std::string& name, int step, int count) {
        Set(name, (static_cast<float>(step) + 0.5f) / static_cast<float>(count));
    }
    /// What the plug-in was called for since this was asked last.
    std::string Calls() const { return Tell("Calls"); }
    bool Press(int osCode, int modifiers = 0, unsigned short character = 0) {
        return mEditor->DoKey(osCode, modifiers, character, true);
    }
    bool RunUntil(const std::function<bool()>& condition) {
        return WaitFor(condition, std::chrono::seconds(20), [this] { mLoop.RunPending(); });
    }
    /// Long enough for timers of the plug-in's to tick several times, if there are any.
    void RunForSomeTicks() {
        int ticks = 0;
        const auto timer = mLoop.StartTimer(10, [&ticks] { ++ticks; });
        EXPECT_TRUE(RunUntil([&ticks] { return ticks >= 3; }));
        mLoop.StopTimer(timer);
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

/// ZelEditorModal3 runs the event loop in one place, once.
class Vst3EditorModalTest : public Vst3EditorTest {
protected:
    enum Where { kNowhere, kMaking, kFrame, kAttached, kRemoved, kWheres };
    void SetWhere(Where where) { SetStep("Where", where, kWheres); }
};

/// ZelEditorThrows3 throws in one place.
class Vst3EditorThrowsTest : public Vst3EditorTest {
protected:
    enum Where {
        kNowhere,
        kMaking,
        kPlatform,
        kFrame,
        kScale,
        kGetSize,
        kAttached,
        kOnSize,
        kFocus,
        kKey,
        kRemoved,
        kTimer,
        kWheres
    };
    void SetWhere(Where where) { SetStep("Where", where, kWheres); }
};

}  // namespace

TEST_F(Vst3EditorTest, OnlyAFilterWithAnEditorHasOne) {
    const auto gain = MakeVst3("good/ZelGain3");
    EXPECT_FALSE(gain->HasEditor());
    EXPECT_FALSE(gain->GetEditor());
    Load("ZelEditor3");
    EXPECT_TRUE(mFilter->HasEditor());
    EXPECT_TRUE(mEditor->UsesPlatformView());
    EXPECT_TRUE(DescribeVst3(TestPlugin("vst3/good/ZelEditor3.vst3")).components.at(0).hasEditor);
    EXPECT_FALSE(DescribeVst3(TestPlugin("vst3/good/ZelGain3.vst3")).components.at(0).hasEditor);
}

TEST_F(Vst3EditorTest, AControllerThatMakesNoViewOrNoneForThisPlatformHasNoEditor) {
    for (const int way : {1, 2}) {
        mFilter = MakeVst3("good/ZelEditorRefuses3");
        SetStep("Way", way, 3);
        EXPECT_TRUE(mFilter->HasEditor()) << "it is believed until it is asked for";
        EXPECT_FALSE(mFilter->GetEditor()) << way;
        EXPECT_FALSE(mFilter->HasEditor()) << way;
        EXPECT_EQ(Calls(), way == 1 ? "" : "made gone");
        SetStep("Way", 0, 3);
        EXPECT_TRUE(mFilter->GetEditor()) << "it has one now";
        EXPECT_TRUE(mFilter->HasEditor());
    }
}

TEST_F(Vst3EditorTest, AViewThatCannotBeMadeAgainDoesNotOpen) {
    Load("ZelEditorRefuses3");
    EXPECT_FALSE(mEditor->OpenView(NoWindow()));
    SetStep("Way", 1, 3);
    EXPECT_FALSE(mEditor->OpenView(NoWindow()));
    EXPECT_EQ(mEditor->GetViewRect(), Rect());
    mEditor->Idle();
    mEditor->SetContentScale(2.0f);
    EXPECT_FALSE(mEditor->DispatchCurrentFocus());
}

TEST_F(Vst3EditorTest, TheEditorIsTheSameAsLongAsSomebodyHoldsIt) {
    Load("ZelEditor3");
    EXPECT_EQ(mFilter->GetEditor(), mEditor);
    EXPECT_EQ(mEditor->GetRefCount(), 1);
    mEditor->OpenView(NoWindow());
    mEditor.reset();
    mEditor = mFilter->GetEditor();
    EXPECT_TRUE(mEditor->OpenView(NoWindow()));
    EXPECT_EQ(Calls(), "frame attached removed noframe gone made frame attached");
}

TEST_F(Vst3EditorTest, TheEditorHoldsItsFilter) {
    Load("ZelEditor3");
    EXPECT_EQ(mFilter->GetRefCount(), 2);
    mFilter.reset();
    EXPECT_TRUE(mEditor->OpenView(NoWindow()));
    mEditor->Idle();
    EXPECT_EQ(mEditor->GetViewRect(), (Rect{0, 0, 300, 200}));
}

TEST_F(Vst3EditorTest, TheLastReferenceClosesTheEditor) {
    LoadOpen("ZelEditor3");
    mEditor.reset();
    EXPECT_EQ(Calls(), "removed noframe gone");
    EXPECT_EQ(mFilter->GetRefCount(), 1);
}

TEST_F(Vst3EditorTest, AnEditorThatWasNeverOpenedIsNotRemoved) {
    Load("ZelEditor3");
    EXPECT_EQ(mEditor->GetViewRect(), (Rect{0, 0, 300, 200}));
    mEditor.reset();
    EXPECT_EQ(Calls(), "gone");
}

TEST_F(Vst3EditorTest, OpeningAnOpenEditorClosesItFirst) {
    LoadOpen("ZelEditor3");
    EXPECT_TRUE(mEditor->OpenView(NoWindow()));
    EXPECT_EQ(Calls(), "removed noframe gone made frame attached");
}

TEST_F(Vst3EditorTest, ClosingAClosedEditorCallsNothing) {
    Load("ZelEditor3");
    mEditor->CloseView();
    EXPECT_EQ(Calls(), "");
    mEditor->OpenView(NoWindow());
    mEditor->CloseView();
    mEditor->CloseView();
    EXPECT_EQ(Calls(), "frame attached removed noframe gone");
    mEditor.reset();
    EXPECT_EQ(Calls(), "");
}

TEST_F(Vst3EditorModalTest, ClosedInTheMiddleOfBeingOpenedItIsClosedWhenTheViewHasReturned) {
    Load("ZelEditorModal3");
    SetWhere(kAttached);
    mLoop.Post([this] { mEditor->CloseView(); });
    EXPECT_FALSE(mEditor->OpenView(NoWindow()));
    EXPECT_EQ(Calls(), "frame attached size.150x100 opened removed noframe gone");
    EXPECT_FALSE(mEditor->DispatchCurrentFocus());
    mEditor->Idle();
    mLoop.RunPending();
    EXPECT_EQ(mSizeChanges, 0);
    EXPECT_TRUE(mEditor->OpenView(NoWindow()));
    EXPECT_EQ(Calls(), "made frame attached size.150x100");
}

TEST_F(Vst3EditorModalTest, ClosedWhileTheViewGetsItsFrameItIsNotAttached) {
    Load("ZelEditorModal3");
    SetWhere(kFrame);
    mLoop.Post([this] { mEditor->CloseView(); });
    EXPECT_FALSE(mEditor->OpenView(NoWindow()));
    EXPECT_EQ(Calls(), "frame framed noframe gone");
    EXPECT_TRUE(mEditor->OpenView(NoWindow()));
}

TEST_F(Vst3EditorModalTest, ClosedWhileItsViewIsMadeItDoesNotOpen) {
    LoadOpen("ZelEditorModal3");
    mEditor->CloseView();
    Calls();
    SetWhere(kMaking);
    mLoop.Post([this] { mEditor->CloseView(); });
    EXPECT_FALSE(mEditor->OpenView(NoWindow()));
    EXPECT_EQ(Calls(), "making made");
    EXPECT_TRUE(mEditor->OpenView(NoWindow()));
    EXPECT_EQ(Calls(), "frame attached size.150x100");
}

TEST_F(Vst3EditorModalTest, OpenedInTheMiddleOfACallOfThePluginsItDoesNotOpen) {
    for (const Where where : {kMaking, kFrame, kAttached}) {
        LoadOpen("ZelEditorModal3");
        mEditor->CloseView();
        std::optional<bool> answer;
        mLoop.Post([&] { answer = mEditor->OpenView(NoWindow()); });
        SetWhere(where);
        EXPECT_FALSE(mEditor->OpenView(NoWindow())) << where;
        EXPECT_EQ(answer, false) << where;
        Calls();
        EXPECT_TRUE(mEditor->OpenView(NoWindow())) << where;
        mEditor->CloseView();
        EXPECT_TRUE(Calls().ends_with("frame attached size.150x100 removed noframe gone")) << where;
    }
}

TEST_F(Vst3EditorModalTest, OpenedWhileItIsAskedForItsSizeItIsOpenWithOneView) {
    LoadOpen("ZelEditorModal3");
    mEditor->CloseView();
    Calls();
    SetWhere(kMaking);
    mLoop.Post([this] { EXPECT_TRUE(mEditor->OpenView(NoWindow())); });
    EXPECT_EQ(mEditor->GetViewRect(), (Rect{0, 0, 150, 100}));
    EXPECT_EQ(Calls(), "made frame attached size.150x100 making made gone") << "the one that came too late goes";
    mEditor->CloseView();
    EXPECT_EQ(Calls(), "removed noframe gone");
}

TEST_F(Vst3EditorModalTest, WhoAsksForTheEditorWhileItIsMadeGetsTheOneThatThereIs) {
    mFilter = MakeVst3("good/ZelEditorModal3");
    SetWhere(kMaking);
    boost::intrusive_ptr<AudioFilterEditor> inner;
    mLoop.Post([&] { inner = mFilter->GetEditor(); });
    mEditor = mFilter->GetEditor();
    ASSERT_TRUE(inner);
    EXPECT_EQ(mEditor, inner);
    EXPECT_EQ(mFilter->GetEditor(), inner);
    EXPECT_EQ(Calls(), "made making made gone");
}

TEST_F(Vst3EditorModalTest, AnEditorThatWentAgainWhileTheNextIsMadeIsNotMissed) {
    mFilter = MakeVst3("good/ZelEditorModal3");
    SetWhere(kMaking);
    mLoop.Post([&] { EXPECT_TRUE(mFilter->GetEditor()); });
    mEditor = mFilter->GetEditor();
    EXPECT_TRUE(mEditor);
    EXPECT_EQ(Calls(), "made gone making made");
}

TEST_F(Vst3EditorTest, WithoutAParentNothingHappens) {
    Load("ZelEditor3");
    EXPECT_FALSE(mEditor->OpenView(nullptr));
    EXPECT_EQ(Calls(), "");
    mEditor->OpenView(NoWindow());
    EXPECT_FALSE(mEditor->OpenView(nullptr));
    EXPECT_EQ(Calls(), "frame attached");
    EXPECT_TRUE(mEditor->DispatchCurrentFocus());
}

TEST_F(Vst3EditorTest, AnEditorThatRefusesIsNotOpenAndNotRemoved) {
    Load("ZelEditorRefuses3");
    for (int i = 0; i < 2; ++i) {
        EXPECT_FALSE(mEditor->OpenView(NoWindow()));
        EXPECT_EQ(Calls(), i == 0 ? "frame attached noframe gone" : "made frame attached noframe gone");
        EXPECT_FALSE(mEditor->DispatchCurrentFocus());
        EXPECT_FALSE(Press('A', 0, 'a'));
    }
    EXPECT_EQ(mEditor->GetViewRect(), (Rect{0, 0, 120, 90}));
}

TEST_F(Vst3EditorTest, OnlyAnOpenEditorGetsKeysAndFocus) {
    Load("ZelEditor3");
    for (const bool isOpen : {false, true, false}) {
        if (isOpen) {
            mEditor->OpenView(NoWindow());
        } else {
            mEditor->CloseView();
        }
        Calls();
        mEditor->Idle();
        EXPECT_EQ(Press('A', 0, 'a'), isOpen);
        EXPECT_EQ(mEditor->DispatchKeyboardFocus(true), isOpen);
        EXPECT_EQ(mEditor->DispatchKeyboardFocus(false), isOpen);
        EXPECT_EQ(mEditor->DispatchCurrentFocus(), isOpen);
        EXPECT_EQ(Calls(), isOpen ? "down.97.0.0 focus focus focus" : "");
    }
    EXPECT_EQ(mAdvances, "");
}

TEST_F(Vst3EditorTest, TheFocusLeavesWithTheTabKeyAndWhenItIsClosed) {
    LoadOpen("ZelEditor3");
    mEditor->DispatchKeyboardFocus(true);
    EXPECT_TRUE(Press(kTab));
    EXPECT_TRUE(Press(kTab));
    EXPECT_EQ(Calls(), "focus down.0.2.0 nofocus down.0.2.0");
    mEditor->DispatchCurrentFocus();
    mEditor->CloseView();
    EXPECT_EQ(Calls(), "focus nofocus removed noframe gone");
}

TEST_F(Vst3EditorTest, ASizeThatIsAskedForIsGivenAtOnceAndToldOnceFromTheMainLoop) {
    LoadOpen("ZelEditor3");
    Set("Size", 0.5f);
    EXPECT_EQ(Tell("Answer"), "0");
    EXPECT_EQ(Calls(), "size.450x300");
    EXPECT_EQ(mSizeChanges, 0) << "never within a call";
    EXPECT_EQ(mEditor->GetViewRect(), (Rect{0, 0, 450, 300}));
    for (int i = 0; i < 3; ++i) {
        mLoop.RunPending();
        EXPECT_EQ(mSizeChanges, 1);
        mEditor->Idle();
    }
}

TEST_F(Vst3EditorTest, ASizeThatIsTheSameOrThereAndGoneIsNotTold) {
    LoadOpen("ZelEditor3");
    Set("Size", 0.0f);
    mLoop.RunPending();
    Set("Size", 1.0f);
    Set("Size", 0.0f);
    mLoop.RunPending();
    mEditor->Idle();
    mLoop.RunPending();
    EXPECT_EQ(mSizeChanges, 0);
}

TEST_F(Vst3EditorTest, ManyChangesInOneGoAreToldOnceAndTheNextAfterATurn) {
    LoadOpen("ZelEditor3");
    for (int i = 0; i <= 1000; ++i) Set("Size", static_cast<float>(i) / 1000.0f);
    mLoop.RunPending();
    EXPECT_EQ(mSizeChanges, 1);
    EXPECT_EQ(mEditor->GetViewRect(), (Rect{0, 0, 600, 400}));
    Set("Size", 0.5f);
    mLoop.RunPending();
    EXPECT_EQ(mSizeChanges, 1);
    mEditor->Idle();
    mLoop.RunPending();
    EXPECT_EQ(mSizeChanges, 2);
}

TEST_F(Vst3EditorTest, ASizeAskedForOnAnotherThreadIsGivenAndToldOnTheMainThread) {
    LoadOpen("ZelEditor3");
    std::optional<std::thread::id> thread;
    mOnSize = [&thread] { thread = std::this_thread::get_id(); };
    Set("Size elsewhere", 1.0f);
    EXPECT_EQ(Tell("Answer"), "0");
    EXPECT_EQ(Calls(), "");
    mLoop.RunPending();
    EXPECT_EQ(Calls(), "size.600x400");
    EXPECT_EQ(thread, std::this_thread::get_id());
    EXPECT_EQ(mSizeChanges, 1);
    EXPECT_EQ(mEditor->GetViewRect(), (Rect{0, 0, 600, 400}));
}

TEST_F(Vst3EditorTest, ASizeAskedForOnAnotherThreadJustBeforeItIsClosedIsDropped) {
    LoadOpen("ZelEditor3");
    Set("Size elsewhere", 1.0f);
    mEditor->CloseView();
    mLoop.RunPending();
    EXPECT_EQ(Calls(), "removed noframe gone");
    EXPECT_EQ(mSizeChanges, 0);
}

TEST_F(Vst3EditorTest, ASizeAskedForWhileItIsOpenedIsGivenAtOnceAndToldAfterwards) {
    for (const int inside : {1, 2}) {
        Load("ZelEditor3");
        mSizeChanges = 0;
        SetStep("Inside", inside, 4);
        ASSERT_TRUE(mEditor->OpenView(NoWindow()));
        EXPECT_EQ(Calls(), inside == 1 ? "frame size.333x222 attached" : "frame attached size.333x222");
        EXPECT_EQ(mSizeChanges, 0);
        EXPECT_EQ(mEditor->GetViewRect(), (Rect{0, 0, 333, 222}));
        mLoop.RunPending();
        EXPECT_EQ(mSizeChanges, 1);
    }
}

TEST_F(Vst3EditorTest, ASizeAskedForWhileItIsClosedIsRefused) {
    for (const bool isClosedByTheLastReference : {false, true}) {
        LoadOpen("ZelEditor3");
        SetStep("Inside", 3, 4);
        if (isClosedByTheLastReference) {
            mEditor.reset();
        } else {
            mEditor->CloseView();
        }
        EXPECT_EQ(Tell("Answer"), "1");
        EXPECT_EQ(Calls(), "removed noframe gone");
        mLoop.RunPending();
        EXPECT_EQ(mSizeChanges, 0);
    }
}

TEST_F(Vst3EditorTest, TheEditorMayBeClosedOrLetGoOfWhileItTellsItsSize) {
    LoadOpen("ZelEditor3");
    mOnSize = [this] { mEditor->CloseView(); };
    Set("Size", 1.0f);
    mLoop.RunPending();
    EXPECT_EQ(Calls(), "size.600x400 removed noframe gone");
    mEditor->OpenView(NoWindow());
    mOnSize = [this] { mEditor.reset(); };
    Set("Size", 0.5f);
    mLoop.RunPending();
    EXPECT_EQ(Calls(), "made frame attached size.450x300 removed noframe gone");
    EXPECT_EQ(mSizeChanges, 2);
}

TEST_F(Vst3EditorTest, AViewThatAnswersEachSizeWithAnotherIsGivenAFew) {
    Load("ZelEditorRestless3");
    Set("Steady", 1.0f);
    ASSERT_TRUE(mEditor->OpenView(NoWindow()));
    mLoop.RunPending();
    mSizeChanges = 0;
    for (int i = 0; i < 100; ++i) {
        const int given = Count("Given");
        Set("Kick", 1.0f);
        EXPECT_THAT(Count("Given") - given, AllOf(Ge(1), Le(4)));
        const Rect wanted = mEditor->GetViewRect();
        mEditor->Idle();
        mLoop.RunPending();
        EXPECT_EQ(mEditor->GetViewRect(), wanted) << "it comes to rest";
    }
    EXPECT_EQ(Tell("Depth"), "1") << "never one within the other";
    EXPECT_THAT(mSizeChanges, Le(100));
}

TEST_F(Vst3EditorTest, AViewThatHasAnotherSizeEachTimeHangsNobody) {
    Load("ZelEditorRestless3");
    int depth = 0;
    mOnSize = [&] {
        EXPECT_EQ(depth, 0);
        ++depth;
        const Rect rect = mEditor->GetViewRect();
        EXPECT_THAT(rect.width, AllOf(Ge(100), Le(364)));
        Set("Kick", 1.0f);
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
    // Each notification gives the view a turn of its own here.
    EXPECT_THAT(mSizeChanges, AllOf(Ge(kTurns), Le(2 * kTurns + 2)));
    EXPECT_EQ(Tell("Depth"), "1");
    const int before = mSizeChanges;
    mOnSize = [this] { mEditor->GetViewRect(); };
    for (int round = 0; round < 50; ++round) mLoop.RunPending();
    EXPECT_LE(mSizeChanges, before + 1) << "without turns it comes to rest";
    mEditor->CloseView();
    for (int round = 0; round < 5; ++round) mLoop.RunPending();
    EXPECT_LE(mSizeChanges, before + 1);
}

TEST_F(Vst3EditorTest, TheRectangleMakesSenseWhateverTheViewSays) {
    LoadOpen("ZelEditorEmpty3");
    constexpr long kNear = std::numeric_limits<int>::min();
    constexpr long kFar = std::numeric_limits<int>::max();
    const std::vector<Rect> expected = {
        {0, 0, 0, 0},       {10, 20, 0, 0},   {0, 0, 16384, 16384}, {kNear, kNear, 16384, 16384},
        {kFar, kFar, 0, 0}, {-5, 7, 120, 90}, {0, 0, 0, 0},         {0, 0, 16384, 16384},
        {0, 0, 0, 0}};
    for (std::size_t i = 0; i < expected.size(); ++i) {
        SetStep("Rectangle", static_cast<int>(i), static_cast<int>(expected.size()));
        EXPECT_EQ(mEditor->GetViewRect(), expected[i]) << i;
    }
}

TEST_F(Vst3EditorTest, SizesThatMakeNoSenseAreRefused) {
    LoadOpen("ZelEditorEmpty3");
    for (const int step : {0, 1, 2, 3, 4, 6, 7, 8}) {
        SetStep("Rectangle", step, 9);
        Set("Ask", 1.0f);
        EXPECT_NE(Tell("Answer"), "0") << step;
        EXPECT_EQ(Calls(), "") << step;
    }
    SetStep("Rectangle", 5, 9);
    Set("Ask", 1.0f);
    EXPECT_EQ(Tell("Answer"), "0");
    EXPECT_EQ(Calls(), "size.120x90");
}

TEST_F(Vst3EditorTest, AnEditorWithoutAreaOpens) {
    Load("ZelEditorEmpty3");
    EXPECT_TRUE(mEditor->OpenView(NoWindow()));
    EXPECT_EQ(mEditor->GetViewRect(), Rect());
    mEditor->Idle();
    mLoop.RunPending();
    EXPECT_EQ(mSizeChanges, 0);
    mEditor->CloseView();
    EXPECT_EQ(Calls(), "frame attached removed noframe gone");
}

TEST_F(Vst3EditorTest, ASizeThatChangesWithoutAWordIsToldAfterATurn) {
    LoadOpen("ZelEditorEmpty3");
    SetStep("Rectangle", 5, 9);
    mLoop.RunPending();
    EXPECT_EQ(mSizeChanges, 0);
    mEditor->Idle();
    mLoop.RunPending();
    EXPECT_EQ(mSizeChanges, 1);
    EXPECT_EQ(mEditor->GetViewRect(), (Rect{-5, 7, 120, 90}));
}

TEST_F(Vst3EditorTest, TheScaleIsToldToEachViewBeforeItIsOpenedAndWhenItChanges) {
    Load("ZelEditor3");
    mEditor->SetContentScale(2.0f);
    EXPECT_EQ(Calls(), "scale.200");
    mEditor->OpenView(NoWindow());
    EXPECT_EQ(Calls(), "frame scale.200 attached");
    mEditor->SetContentScale(2.0f);
    EXPECT_EQ(Calls(), "");
    mEditor->SetContentScale(1.25f);
    EXPECT_EQ(Calls(), "scale.125");
    mEditor->CloseView();
    mEditor->SetContentScale(1.0f);
    EXPECT_EQ(Calls(), "removed noframe gone");
    mEditor->GetViewRect();
    EXPECT_EQ(Calls(), "made scale.100");
    mEditor->OpenView(NoWindow());
    EXPECT_EQ(Calls(), "frame scale.100 attached");
}

TEST_F(Vst3EditorTest, SizesAreInUnitsOfTheHostWhateverItsScale) {
    LoadOpen("ZelEditor3");
    mEditor->SetContentScale(2.0f);
    EXPECT_EQ(mEditor->GetViewRect(), (Rect{0, 0, 150, 100}));
    mEditor->SetContentScale(1.25f);
    EXPECT_EQ(mEditor->GetViewRect(), (Rect{0, 0, 240, 160}));
}

TEST_F(Vst3EditorTest, AScaleThatMakesNoSenseIsNotTold) {
    LoadOpen("ZelEditor3");
    for (const float scale :
         {0.0f, -1.0f, 0.09f, 16.5f, std::numeric_limits<float>::quiet_NaN(), std::numeric_limits<float>::infinity()}) {
        mEditor->SetContentScale(scale);
    }
    EXPECT_EQ(Calls(), "");
    EXPECT_EQ(mEditor->GetViewRect(), (Rect{0, 0, 300, 200}));
    for (const float scale : {0.1f, 16.0f}) mEditor->SetContentScale(scale);
    EXPECT_EQ(Calls(), "scale.10 scale.1600");
}

TEST_F(Vst3EditorTest, AScaleThatChangesTheSizeInUnitsOfAnOpenEditorIsToldOnce) {
    LoadOpen("ZelEditor3");
    mEditor->SetContentScale(2.0f);
    EXPECT_EQ(mSizeChanges, 0) << "never within a call";
    for (int i = 0; i < 3; ++i) {
        mLoop.RunPending();
        EXPECT_EQ(mSizeChanges, 1);
        mEditor->Idle();
    }
    EXPECT_EQ(mEditor->GetViewRect(), (Rect{0, 0, 150, 100}));
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

TEST_F(Vst3EditorTest, TheThemeHasNoWayIntoThePlugin) {
    LoadOpen("ZelEditor3");
    mEditor->SetThemeBrightness(0.25f, true);
    EXPECT_EQ(Calls(), "");
}

TEST_F(Vst3EditorTest, KeysReachThePluginAndItSaysWhichItUsed) {
    LoadOpen("ZelEditor3");
    EXPECT_TRUE(Press('A', 0, 'a'));
    EXPECT_TRUE(mEditor->DoKey('A', 0, 'a', false));
    EXPECT_FALSE(Press('B', kShift, 'B'));
    EXPECT_TRUE(Press(0x1B, 0, 27));
    EXPECT_EQ(Calls(), "down.97.0.0 up.97.0.0 down.66.0.1 down.27.6.0");
}

TEST_F(Vst3EditorTest, KeysAreTranslated) {
    LoadOpen("ZelEditor3");
    const std::vector<std::pair<int, int>> keys = {
        {0x08, 1},  {0x0C, 3},  {0x0D, 4},  {0x10, 54}, {0x11, 55}, {0x12, 56}, {0x13, 5},  {0x20, 7},  {0x21, 15},
        {0x22, 16}, {0x23, 9},  {0x24, 10}, {0x25, 11}, {0x26, 12}, {0x27, 13}, {0x28, 14}, {0x2C, 20}, {0x2D, 21},
        {0x2E, 22}, {0x2F, 23}, {0x5B, 77}, {0x5C, 77}, {0x5D, 58}, {0x60, 24}, {0x69, 33}, {0x6A, 34}, {0x6F, 39},
        {0x70, 40}, {0x7B, 51}, {0x7C, 65}, {0x87, 76}, {0x90, 52}, {0x91, 53}};
    for (const auto& [osCode, virtualKey] : keys) {
        EXPECT_FALSE(Press(osCode));
        EXPECT_EQ(Calls(), "down.0." + std::to_string(virtualKey) + ".0") << osCode;
    }
}

TEST_F(Vst3EditorTest, ModifiersAreTranslatedAndALetterThatTypesNothingIsStillTold) {
    LoadOpen("ZelEditor3");
    Press('Z', kControl);
    Press('Z', kShift | kControl | kAlt);
    Press('7', kAlt);
    EXPECT_EQ(Calls(), "down.122.0.4 down.122.0.7 down.55.0.2");
}

TEST_F(Vst3EditorTest, AKeyThatThePluginCannotKnowIsNotPassedOn) {
    LoadOpen("ZelEditor3");
    for (const int osCode : {0, -1, 0x5E, 0x88, 0xFFFF, 1 << 30}) EXPECT_FALSE(Press(osCode));
    EXPECT_EQ(Calls(), "");
}

TEST_F(Vst3EditorTest, ATabThatThePluginDoesNotUseMovesTheFocusOn) {
    LoadOpen("ZelEditor3");
    EXPECT_TRUE(Press(kTab, 0, '\t'));
    EXPECT_EQ(mAdvances, "forward ");
    EXPECT_TRUE(Press(kTab, kShift));
    EXPECT_EQ(mAdvances, "forward backward ");
    EXPECT_FALSE(mEditor->DoKey(kTab, 0, '\t', false)) << "once a key";
    EXPECT_FALSE(Press(kTab, kControl)) << "the host's";
    EXPECT_FALSE(Press(kTab, kAlt)) << "the system's";
    EXPECT_EQ(mAdvances, "forward backward ");
}

TEST_F(Vst3EditorTest, TheEditorMayBeLetGoOfWhileItMovesTheFocusOn) {
    LoadOpen("ZelEditor3");
    mFocusConnection = mEditor->GetAdvanceFocusSignal().connect([this](bool) { mEditor.reset(); });
    EXPECT_TRUE(Press(kTab));
    EXPECT_EQ(Calls(), "down.0.2.0 removed noframe gone");
}

TEST_F(Vst3EditorTest, TimersAndDescriptorsOfTheViewWorkWhileItIsOpen) {
    LoadOpen("ZelEditor3");
    EXPECT_TRUE(RunUntil([this] { return Count("Ticks") >= 5 && Count("Reads") >= 5; }));
    mEditor->CloseView();
    const int ticks = Count("Ticks");
    RunForSomeTicks();
    EXPECT_EQ(Count("Ticks"), ticks);
    mEditor->OpenView(NoWindow());
    EXPECT_TRUE(RunUntil([&] { return Count("Ticks") >= ticks + 5; }));
}

TEST_F(Vst3EditorTest, WhatAViewLeavesInTheRunLoopGoesWithIt) {
    LoadOpen("ZelEditor3");
    Set("Untidy", 1.0f);
    EXPECT_TRUE(RunUntil([this] { return Count("Ticks") >= 2; }));
    mEditor->CloseView();
    EXPECT_EQ(Calls(), "removed noframe gone");
    const int ticks = Count("Ticks");
    const int reads = Count("Reads");
    RunForSomeTicks();
    EXPECT_EQ(Count("Ticks"), ticks);
    EXPECT_EQ(Count("Reads"), reads);
}

TEST_F(Vst3EditorTest, AFrameThatIsKeptAsksForNothing) {
    LoadOpen("ZelEditor3");
    Set("Untidy", 1.0f);
    mEditor->CloseView();
    for (const bool hasEditor : {true, false}) {
        if (!hasEditor) mEditor.reset();
        for (const char* const way : {"Size", "Size elsewhere"}) {
            Set(way, hasEditor ? 0.5f : 1.0f);
            EXPECT_EQ(Tell("Answer"), "1") << way;
        }
        mLoop.RunPending();
    }
    EXPECT_EQ(mSizeChanges, 0);
}

TEST_F(Vst3EditorTest, WhatAnUntidyViewLeavesIsHarmlessWhenTheModuleIsGone) {
    LoadOpen("ZelEditor3");
    Set("Untidy", 1.0f);
    Set("Size elsewhere", 1.0f);
    mFilter.reset();
    mEditor.reset();
    RunForSomeTicks();
    EXPECT_EQ(mSizeChanges, 0);
}

TEST_F(Vst3EditorTest, TwoEditorsOfOneModuleAreIndependent) {
    LoadOpen("ZelEditor3");
    const auto other = MakeVst3("good/ZelEditor3");
    const auto otherEditor = other->GetEditor();
    ASSERT_TRUE(otherEditor->OpenView(NoWindow()));
    Set("Size", 1.0f);
    EXPECT_EQ(otherEditor->GetViewRect(), (Rect{0, 0, 300, 200}));
    otherEditor->CloseView();
    mLoop.RunPending();
    EXPECT_EQ(mSizeChanges, 1);
    EXPECT_TRUE(RunUntil([this] { return Count("Ticks") >= 3; }));
}

TEST_F(Vst3EditorTest, WithoutAMainLoopItOpensAllTheSame) {
    Load("ZelEditor3");
    zelcore::threads::MainLoop::Install(nullptr);
    EXPECT_TRUE(mEditor->OpenView(NoWindow()));
    Set("Size", 1.0f);
    EXPECT_EQ(mEditor->GetViewRect(), (Rect{0, 0, 600, 400}));
    mEditor->CloseView();
    EXPECT_EQ(Calls(), "frame attached size.600x400 removed noframe gone");
    zelcore::threads::MainLoop::Install(&mLoop);
}

TEST_F(Vst3EditorThrowsTest, AnExceptionWhenTheViewIsMadeMeansThatThereIsNone) {
    mFilter = MakeVst3("good/ZelEditorThrows3");
    for (const Where where : {kMaking, kPlatform}) {
        SetWhere(where);
        EXPECT_FALSE(mFilter->GetEditor());
        EXPECT_FALSE(mFilter->HasEditor());
    }
    SetWhere(kNowhere);
    EXPECT_TRUE(mFilter->GetEditor());
}

TEST_F(Vst3EditorThrowsTest, AnExceptionWhenItIsOpenedIsAFailure) {
    Load("ZelEditorThrows3");
    SetWhere(kAttached);
    EXPECT_FALSE(mEditor->OpenView(NoWindow()));
    EXPECT_EQ(Calls(), "frame attached removed noframe gone") << "how far it got is not known";
    EXPECT_FALSE(mEditor->DispatchCurrentFocus());
    RunForSomeTicks();
    EXPECT_EQ(Calls(), "");
}

TEST_F(Vst3EditorThrowsTest, ExceptionsElsewhereHaveNoEffect) {
    Load("ZelEditorThrows3");
    mEditor->SetContentScale(2.0f);
    for (int where = kFrame; where < kWheres; ++where) {
        if (where == kAttached) continue;
        SetWhere(static_cast<Where>(where));
        EXPECT_TRUE(mEditor->OpenView(NoWindow())) << where;
        mEditor->Idle();
        Set("Size", 1.0f);
        EXPECT_EQ(mEditor->GetViewRect().width, 120) << where;
        EXPECT_TRUE(mEditor->DispatchKeyboardFocus(true)) << where;
        EXPECT_EQ(Press('A', 0, 'a'), where != kKey);
        Calls();
        EXPECT_TRUE(RunUntil([this] { return Calls().starts_with("tick"); })) << where;
        Calls();
        mEditor->CloseView();
        EXPECT_EQ(Calls(), "nofocus removed noframe gone") << where;
        RunForSomeTicks();
        EXPECT_EQ(Calls(), "") << "its timer went with it";
    }
}
