#include <stdexcept>

#include "SliderStage.h"

namespace zeltests {
namespace {

const Told kWholeGesture = {"start", "change", "end", "changed"};
const Told kNoChange = {"start", "cancel"};

/// Gestures by key and wheel, and all the ways in which a gesture can end.
class UI_SliderGestureTest : public SliderStage {
protected:
    void StartDragWithAChange() {
        const QPoint start = GetHandle().center();
        PressHandle();
        MoveTo(start + QPoint(10, 0));
        ASSERT_EQ(mTold, (Told{"start", "change"}));
    }
    /// Nothing more comes after what was told, however the mouse goes on.
    void ExpectNoMore() {
        const Told told = mTold;
        MoveTo(QPoint(20, 11));
        Release(QPoint(20, 11));
        QCoreApplication::processEvents();
        EXPECT_EQ(mTold, told);
    }
};

}  // namespace

// Keys

TEST_F(UI_SliderGestureTest, EachKeyMovesByItsStep) {
    GiveFocus();
    const struct {
        int key;
        Qt::KeyboardModifiers modifiers;
        double value;
    } kSteps[] = {{Qt::Key_Right, Qt::NoModifier, 0.51},     {Qt::Key_Up, Qt::NoModifier, 0.51},
                  {Qt::Key_Left, Qt::NoModifier, 0.49},      {Qt::Key_Down, Qt::NoModifier, 0.49},
                  {Qt::Key_Right, Qt::ShiftModifier, 0.501}, {Qt::Key_Left, Qt::ShiftModifier, 0.499},
                  {Qt::Key_PageUp, Qt::NoModifier, 0.6},     {Qt::Key_PageDown, Qt::NoModifier, 0.4},
                  {Qt::Key_Home, Qt::NoModifier, 0.0},       {Qt::Key_End, Qt::NoModifier, 1.0}};
    for (const auto& step : kSteps) {
        mSlider->SetValue(kHalf);
        mTold.clear();
        Key(step.key, step.modifiers);
        EXPECT_NEAR(mSlider->GetValue(), step.value, 1e-12) << step.key;
        EXPECT_EQ(mTold, kWholeGesture);
    }
}

TEST_F(UI_SliderGestureTest, ManyStepsEndAtTheEndsExactly) {
    GiveFocus();
    for (int i = 0; i < 50; ++i) Key(Qt::Key_Right);
    EXPECT_EQ(mSlider->GetValue(), 1.0);
    for (int i = 0; i < 100; ++i) Key(Qt::Key_Left);
    EXPECT_EQ(mSlider->GetValue(), 0.0);
    mTold.clear();
    Key(Qt::Key_Left);
    EXPECT_EQ(mTold, kNoChange);
}

TEST_F(UI_SliderGestureTest, AHeldKeyIsOneGestureWithAllItsRepetitions) {
    GiveFocus();
    SendKey(GetQtSlider(), QEvent::KeyPress, Qt::Key_Right);
    for (int i = 0; i < 3; ++i) {
        SendKey(GetQtSlider(), QEvent::KeyRelease, Qt::Key_Right, true);
        SendKey(GetQtSlider(), QEvent::KeyPress, Qt::Key_Right, true);
    }
    EXPECT_EQ(mTold, (Told{"start", "change", "change", "change", "change"}));
    SendKey(GetQtSlider(), QEvent::KeyRelease, Qt::Key_Right);
    EXPECT_EQ(Shortened(), kWholeGesture);
    EXPECT_NEAR(mSlider->GetValue(), 0.54, 1e-12);
}

TEST_F(UI_SliderGestureTest, TwoKeysHeldAtOnceAreOneGestureUntilTheLastIsReleased) {
    GiveFocus();
    SendKey(GetQtSlider(), QEvent::KeyPress, Qt::Key_Right);
    SendKey(GetQtSlider(), QEvent::KeyPress, Qt::Key_PageUp);
    SendKey(GetQtSlider(), QEvent::KeyRelease, Qt::Key_Right);
    EXPECT_EQ(mTold, (Told{"start", "change", "change"}));
    SendKey(GetQtSlider(), QEvent::KeyRelease, Qt::Key_PageUp);
    EXPECT_EQ(Shortened(), kWholeGesture);
}

TEST_F(UI_SliderGestureTest, KeysOfOthersGoOnToTheHost) {
    GiveFocus();
    EventCounter reaching(&mStage.GetArea(), QEvent::KeyPress);
    Key(Qt::Key_Space);
    Key(Qt::Key_Escape);
    Key(Qt::Key_Right, Qt::ControlModifier);
    EXPECT_EQ(reaching.GetCount(), 3);
    EXPECT_TRUE(mTold.empty());
}

TEST_F(UI_SliderGestureTest, ARepetitionOfAKeyThatWasPressedElsewhereIsNone) {
    GiveFocus();
    SendKey(GetQtSlider(), QEvent::KeyPress, Qt::Key_Right, true);
    SendKey(GetQtSlider(), QEvent::KeyRelease, Qt::Key_Right);
    EXPECT_TRUE(mTold.empty());
    EXPECT_EQ(mSlider->GetValue(), kHalf);
}

TEST_F(UI_SliderGestureTest, ItsKeysAreNotTheHostsShortcuts) {
    const auto isOurs = [this](int key, Qt::KeyboardModifiers modifiers) {
        QKeyEvent event(QEvent::ShortcutOverride, key, modifiers);
        event.ignore();
        QCoreApplication::sendEvent(GetQtSlider(), &event);
        return event.isAccepted();
    };
    EXPECT_TRUE(isOurs(Qt::Key_Left, Qt::NoModifier));
    EXPECT_TRUE(isOurs(Qt::Key_Home, Qt::NoModifier));
    EXPECT_FALSE(isOurs(Qt::Key_Left, Qt::ControlModifier));
    EXPECT_FALSE(isOurs(Qt::Key_Space, Qt::NoModifier));
    EXPECT_FALSE(isOurs(Qt::Key_Escape, Qt::NoModifier));
    PressHandle();
    EXPECT_TRUE(isOurs(Qt::Key_Escape, Qt::NoModifier)) << "during a gesture";
}

TEST_F(UI_SliderGestureTest, TakingHoldByMouseEndsAGestureByKey) {
    GiveFocus();
    SendKey(GetQtSlider(), QEvent::KeyPress, Qt::Key_Right);
    PressHandle();
    EXPECT_EQ(mTold, (Told{"start", "change", "end", "changed", "start"}));
    SendKey(GetQtSlider(), QEvent::KeyPress, Qt::Key_Right, true);
    SendKey(GetQtSlider(), QEvent::KeyRelease, Qt::Key_Right);
    EXPECT_EQ(mTold.size(), 5u) << "the key is none of the drag's";
}

// Escape

TEST_F(UI_SliderGestureTest, EscapeTakesADragBack) {
    mSlider->SetValue(1.0 / 3.0);
    StartDragWithAChange();
    SendKey(GetQtSlider(), QEvent::KeyPress, Qt::Key_Escape);
    EXPECT_EQ(mTold, (Told{"start", "change", "change", "cancel"}));
    EXPECT_EQ(mSlider->GetValue(), 1.0 / 3.0);
    ExpectNoMore();
}

TEST_F(UI_SliderGestureTest, EscapeWithoutAChangeOnlyCancels) {
    PressHandle();
    SendKey(GetQtSlider(), QEvent::KeyPress, Qt::Key_Escape);
    EXPECT_EQ(mTold, kNoChange);
    ExpectNoMore();
}

TEST_F(UI_SliderGestureTest, EscapeTakesAHeldKeyBack) {
    GiveFocus();
    SendKey(GetQtSlider(), QEvent::KeyPress, Qt::Key_PageUp);
    SendKey(GetQtSlider(), QEvent::KeyPress, Qt::Key_Escape);
    SendKey(GetQtSlider(), QEvent::KeyRelease, Qt::Key_PageUp);
    EXPECT_EQ(mTold, (Told{"start", "change", "change", "cancel"}));
    EXPECT_EQ(mSlider->GetValue(), kHalf);
}

TEST_F(UI_SliderGestureTest, EscapeTakesBackWhatLaysBesideTheExtentToo) {
    mSlider->SetExtent({0.6, 1.0});
    mSlider->SetValue(0.1);
    PressHandle();
    MoveTo(QPoint(100, 11));
    EXPECT_GE(mSlider->GetValue(), 0.6);
    SendKey(GetQtSlider(), QEvent::KeyPress, Qt::Key_Escape);
    EXPECT_EQ(mSlider->GetValue(), 0.1);
}

// Wheel

TEST_F(UI_SliderGestureTest, TheWheelScrollsTheListUnlessTheSliderHasTheFocus) {
    EventCounter scrolling(mStage.GetArea().viewport(), QEvent::Wheel);
    TurnWheel(GetQtSlider(), -120);
    EXPECT_EQ(scrolling.GetCount(), 1);
    EXPECT_EQ(mSlider->GetValue(), kHalf);
    EXPECT_TRUE(mTold.empty());
    EXPECT_FALSE(mSlider->UI_HasKeyboardFocus(false)) << "the wheel does not take the focus either";
}

TEST_F(UI_SliderGestureTest, WithTheFocusEachNotchIsAGesture) {
    GiveFocus();
    EventCounter scrolling(mStage.GetArea().viewport(), QEvent::Wheel);
    TurnWheel(GetQtSlider(), 240);
    EXPECT_NEAR(mSlider->GetValue(), 0.52, 1e-12);
    Told twice = kWholeGesture;
    twice.insert(twice.end(), kWholeGesture.begin(), kWholeGesture.end());
    EXPECT_EQ(mTold, twice);
    TurnWheel(GetQtSlider(), -120);
    EXPECT_NEAR(mSlider->GetValue(), 0.51, 1e-12);
    EXPECT_EQ(scrolling.GetCount(), 0);
}

TEST_F(UI_SliderGestureTest, PartsOfANotchAddUp) {
    GiveFocus();
    for (int i = 0; i < 3; ++i) TurnWheel(GetQtSlider(), 30);
    EXPECT_TRUE(mTold.empty());
    TurnWheel(GetQtSlider(), 30);
    EXPECT_EQ(mTold, kWholeGesture);
}

TEST_F(UI_SliderGestureTest, TheWheelDuringADragIsNothing) {
    PressHandle();
    TurnWheel(GetQtSlider(), 120);
    EXPECT_EQ(mTold, Told{"start"});
    EXPECT_EQ(mSlider->GetValue(), kHalf);
}

// Cut short

TEST_F(UI_SliderGestureTest, LosingTheFocusEndsIt) {
    StartDragWithAChange();
    mStage.GetArea().setFocus();
    EXPECT_TRUE(WaitToBeTold("changed"));
    EXPECT_EQ(mTold, kWholeGesture);
    ExpectNoMore();
}

TEST_F(UI_SliderGestureTest, BeingHiddenEndsItAndWithoutAChangeCancelsIt) {
    PressHandle();
    mSlider->UI_Hide();
    EXPECT_TRUE(WaitToBeTold("cancel"));
    EXPECT_EQ(mTold, kNoChange);
}

TEST_F(UI_SliderGestureTest, BeingDisabledEndsIt) {
    StartDragWithAChange();
    mStage.GetRoot()->UI_SetDisabled(true);
    EXPECT_TRUE(WaitToBeTold("changed"));
    EXPECT_EQ(mTold, kWholeGesture);
    mStage.GetRoot()->UI_SetDisabled(false);
    ExpectNoMore();
}

TEST_F(UI_SliderGestureTest, BeingTakenFromTheTreeEndsItForWhoStillHoldsTheSlider) {
    StartDragWithAChange();
    mStage.GetRoot()->ChildRemove(mSlider);
    EXPECT_TRUE(WaitToBeTold("changed"));
    EXPECT_EQ(mTold, kWholeGesture);
}

TEST_F(UI_SliderGestureTest, ASliderThatNobodyHoldsAnyMoreTellsNobody) {
    StartDragWithAChange();
    const boost::intrusive_ptr<zelui::ui::UI_SubView> root = mStage.GetRoot();
    root->ChildRemove(std::exchange(mSlider, nullptr));
    QCoreApplication::processEvents();
    EXPECT_EQ(mTold, (Told{"start", "change"}));
}

TEST_F(UI_SliderGestureTest, NobodyIsToldInsideOfWhatCutsItShort) {
    StartDragWithAChange();
    mSlider->UI_Hide();
    EXPECT_EQ(mTold, (Told{"start", "change"}));
    EXPECT_TRUE(WaitToBeTold("changed"));
}

TEST_F(UI_SliderGestureTest, TheEndIsToldBeforeTheNextGestureBegins) {
    StartDragWithAChange();
    mStage.GetArea().setFocus();
    PressHandle();
    EXPECT_EQ(mTold, (Told{"start", "change", "end", "changed", "start"}));
}

TEST_F(UI_SliderGestureTest, ChangesByTheProgramDoNotEndIt) {
    StartDragWithAChange();
    mSlider->SetValue(0.9);
    mSlider->SetValueRange({0, 10});
    EXPECT_EQ(mTold, (Told{"start", "change"}));
    MoveTo(GetHandle().center() + QPoint(20, 0));
    Release(GetHandle().center());
    EXPECT_EQ(Shortened(), kWholeGesture);
    EXPECT_GT(mSlider->GetValue(), 1.0);
}

// Handlers that do as they like

TEST_F(UI_SliderGestureTest, AHandlerMayTakeAllAwayAtEveryStep) {
    for (const Message::ChangeMessage step : {Message::kStart, Message::kChange, Message::kEnd, Message::kCancel}) {
        mTold.clear();
        mSlider = AddSlider(zelui::controls::kSliderHorizontal, false);
        mSlider->NotifyWhenChangedInteractively(Handler<Interactive>([this, step](Message* message) {
            Write(*message);
            if (message->GetChangeMessage() == step) mStage.GetRoot()->ChildRemove(std::exchange(mSlider, nullptr));
        }));
        const QPointer<QSlider> widget = GetQtSlider();
        QTest::mousePress(widget, Qt::LeftButton, Qt::NoModifier, QPoint(100, 11));
        if (widget) QTest::mouseRelease(widget, Qt::LeftButton, Qt::NoModifier, QPoint(100, 11));
        if (step == Message::kCancel && mSlider) {
            mSlider->SetExtent({mSlider->GetValue(), mSlider->GetValue()});
            QTest::mouseClick(widget, Qt::LeftButton, Qt::NoModifier, QPoint(20, 11));
        }
        EXPECT_FALSE(mSlider) << step;
        EXPECT_TRUE(WaitUntilGone(widget.data()));
    }
}

TEST_F(UI_SliderGestureTest, AHandlerMayTakeTheWholeTreeAwayInAKeyOrWheelGesture) {
    GiveFocus();
    const QPointer<QSlider> widget = GetQtSlider();
    mSlider->NotifyWhenChangedInteractively(Handler<Interactive>([this](Message* message) {
        Write(*message);
        mSlider.reset();
        delete mStage.GetArea().takeWidget();
    }));
    TurnWheel(widget, 240);
    EXPECT_EQ(mTold, Told{"start"});
}

TEST_F(UI_SliderGestureTest, AnExceptionOfTheHandlerDoesNotBreakTheGesture) {
    mSlider->NotifyWhenChangedInteractively(Handler<Interactive>([this](Message* message) {
        Write(*message);
        throw std::runtime_error("from the product");
    }));
    for (int i = 0; i < 3; ++i)
        QTest::ignoreMessage(QtWarningMsg, "A slider's handler threw an exception: from the product");
    StartDragWithAChange();
    Release(QPoint(100, 11));
    EXPECT_EQ(mTold, (Told{"start", "change", "end"}));
    EXPECT_GT(mSlider->GetValue(), kHalf);
}

}  // namespace zeltests
