#include <cmath>
#include <limits>
#include <set>
#include <stdexcept>

#include <QProxyStyle>
#include <zelui/Theme.h>

#include "SliderStage.h"

namespace zeltests {
namespace {

using zelui::controls::kSliderHorizontal;
using zelui::controls::kSliderVertical;
using zelui::controls::UI_Slider;

const Told kWholeGesture = {"start", "change", "end", "changed"};
const Told kNoChange = {"start", "cancel"};
const double kNaN = std::numeric_limits<double>::quiet_NaN();

class UI_SliderTest : public SliderStage {};

/// Remembers the palettes that sliders are drawn with.
class PaletteWatch : public QProxyStyle {
public:
    PaletteWatch() : QProxyStyle(QStringLiteral("fusion")) {}
    int GetDrawn() const { return mDrawn; }
    const std::set<qint64>& GetKeys() const { return mKeys; }

    void drawComplexControl(ComplexControl control, const QStyleOptionComplex* option, QPainter* painter,
                            const QWidget* widget) const override {
        ++mDrawn;
        mKeys.insert(option->palette.cacheKey());
        QProxyStyle::drawComplexControl(control, option, painter, widget);
    }

private:
    mutable int mDrawn = 0;
    mutable std::set<qint64> mKeys;
};

boost::intrusive_ptr<UI_Slider> MakeSlider() { return new UI_Slider(kSliderHorizontal, false); }

}  // namespace

// Values

TEST(UI_SliderValueTest, AValueIsKeptExactlyAndMovedIntoTheRange) {
    const auto slider = MakeSlider();
    EXPECT_EQ(slider->GetValueRange(), UI_Slider::Range(0.0, 1.0));
    slider->SetValue(1.0 / 3.0);
    EXPECT_EQ(slider->GetValue(), 1.0 / 3.0);
    slider->SetValue(7.0);
    EXPECT_EQ(slider->GetValue(), 1.0);
    slider->SetValue(-std::numeric_limits<double>::infinity());
    EXPECT_EQ(slider->GetValue(), 0.0);
    slider->SetValue(0.25);
    slider->SetValue(kNaN);
    EXPECT_EQ(slider->GetValue(), 0.25);
}

TEST(UI_SliderValueTest, ARangeThatIsNoneChangesNothing) {
    const auto slider = MakeSlider();
    slider->SetValue(0.25);
    for (const UI_Slider::Range& range :
         {UI_Slider::Range(1, 1), UI_Slider::Range(2, 1), UI_Slider::Range(kNaN, 1), UI_Slider::Range(0, kNaN),
          UI_Slider::Range(0, std::numeric_limits<double>::infinity())}) {
        slider->SetValueRange(range);
        EXPECT_EQ(slider->GetValueRange(), UI_Slider::Range(0.0, 1.0));
    }
    EXPECT_EQ(slider->GetValue(), 0.25);
    slider->SetValueRange({10, 20});
    EXPECT_EQ(slider->GetValue(), 10.0);
}

TEST(UI_SliderValueTest, TheExtentIsAllOfTheRangeUntilItIsSet) {
    const auto slider = MakeSlider();
    slider->SetValueRange({-10, 10});
    EXPECT_EQ(slider->GetExtent(), UI_Slider::Range(-10.0, 10.0));
    slider->SetExtent({-5, 5});
    slider->SetValueRange({-20, 20});
    EXPECT_EQ(slider->GetExtent(), UI_Slider::Range(-5.0, 5.0));
    slider->SetExtent({5, -5});
    slider->SetExtent({kNaN, 1});
    EXPECT_EQ(slider->GetExtent(), UI_Slider::Range(-5.0, 5.0));
}

TEST_F(UI_SliderTest, TheProgramsOwnChangesTellNobody) {
    mSlider->SetValue(0.75);
    mSlider->SetValueRange({0, 100});
    mSlider->SetExtent({10, 20});
    EXPECT_TRUE(mTold.empty());
}

TEST_F(UI_SliderTest, TheHandleStandsWhereTheValueIs) {
    mSlider->SetValue(0.0);
    const int left = GetHandle().center().x();
    mSlider->SetValue(1.0);
    const int right = GetHandle().center().x();
    mSlider->SetValue(0.5);
    EXPECT_LT(left, 10);
    EXPECT_GT(right, 110);
    EXPECT_NEAR(GetHandle().center().x(), (left + right) / 2, 1);
}

// Mouse

TEST_F(UI_SliderTest, AClickOnTheHandleIsACancelledGesture) {
    PressHandle();
    Release(GetHandle().center());
    EXPECT_EQ(mTold, kNoChange);
    EXPECT_EQ(mSlider->GetValue(), kHalf);
    EXPECT_TRUE(mSlider->UI_HasKeyboardFocus(false));
}

TEST_F(UI_SliderTest, ADragTellsEachChangeAndItsEndOnce) {
    const QPoint start = GetHandle().center();
    PressHandle();
    EXPECT_EQ(mTold, Told{"start"});
    EXPECT_EQ(mSlider->GetValue(), kHalf) << "taking hold of it changes nothing";
    MoveTo(start + QPoint(10, 0));
    const double first = mSlider->GetValue();
    MoveTo(start + QPoint(20, 0));
    MoveTo(start + QPoint(20, 5));
    Release(start + QPoint(20, 5));
    EXPECT_EQ(mTold, (Told{"start", "change", "change", "end", "changed"}));
    EXPECT_GT(first, kHalf);
    EXPECT_NEAR(mSlider->GetValue() - kHalf, 2 * (first - kHalf), 1e-12);
}

TEST_F(UI_SliderTest, ADragReachesBothEndsExactlyAndNothingBeyond) {
    mSlider->SetValue(1.0 / 3.0);
    const QPoint start = GetHandle().center();
    PressHandle();
    MoveTo(start + QPoint(500, 0));
    EXPECT_EQ(mSlider->GetValue(), 1.0);
    MoveTo(start - QPoint(500, 0));
    EXPECT_EQ(mSlider->GetValue(), 0.0);
    MoveTo(start - QPoint(600, 0));
    EXPECT_EQ(mTold, (Told{"start", "change", "change"}));
    MoveTo(start);
    EXPECT_EQ(mSlider->GetValue(), 1.0 / 3.0) << "where it began it is exactly what it was";
    Release(start);
    EXPECT_EQ(mTold.back(), "changed");
}

TEST_F(UI_SliderTest, EveryPixelOfTheTrackIsAnotherValue) {
    std::vector<double> values;
    const QPoint start = GetHandle().center();
    PressHandle();
    for (int x = -40; x <= 40; ++x) {
        MoveTo(start + QPoint(x, 0));
        values.push_back(mSlider->GetValue());
    }
    for (std::size_t i = 1; i < values.size(); ++i) EXPECT_GT(values[i], values[i - 1]);
}

TEST_F(UI_SliderTest, AClickBesideTheHandleTakesItThereAndGoesOnAsADrag) {
    Press(QPoint(100, 11));
    EXPECT_EQ(mTold, (Told{"start", "change"}));
    EXPECT_NEAR(GetHandle().center().x(), 100, 1);
    const double jumped = mSlider->GetValue();
    MoveTo(QPoint(90, 11));
    EXPECT_LT(mSlider->GetValue(), jumped);
    EXPECT_NEAR(GetHandle().center().x(), 90, 1);
    Release(QPoint(90, 11));
    EXPECT_EQ(Shortened(), kWholeGesture);
}

TEST_F(UI_SliderTest, AClickAtTheOuterEdgeReachesTheEnd) {
    Press(QPoint(119, 11));
    Release(QPoint(119, 11));
    EXPECT_EQ(mSlider->GetValue(), 1.0);
    Press(QPoint(0, 11));
    Release(QPoint(0, 11));
    EXPECT_EQ(mSlider->GetValue(), 0.0);
}

TEST_F(UI_SliderTest, WithShiftTheDragIsTenTimesAsFineAndNothingJumps) {
    const QPoint start = GetHandle().center();
    PressHandle();
    MoveTo(start + QPoint(10, 0));
    const double coarse = mSlider->GetValue() - kHalf;
    const double before = mSlider->GetValue();
    MoveTo(start + QPoint(10, 0), Qt::ShiftModifier);
    EXPECT_EQ(mSlider->GetValue(), before);
    MoveTo(start + QPoint(20, 0), Qt::ShiftModifier);
    EXPECT_NEAR(mSlider->GetValue() - before, coarse / 10, 1e-12);
    MoveTo(start + QPoint(30, 0));
    EXPECT_NEAR(mSlider->GetValue() - before, coarse / 10 + coarse, 1e-12);
    Release(start + QPoint(30, 0));
}

TEST_F(UI_SliderTest, OtherMouseButtonsDoNothing) {
    EventCounter reaching(&mStage.GetNodeWidget(), QEvent::MouseButtonPress);
    for (const Qt::MouseButton button : {Qt::RightButton, Qt::MiddleButton}) {
        QTest::mousePress(GetQtSlider(), button, Qt::NoModifier, QPoint(100, 11));
        QTest::mouseRelease(GetQtSlider(), button, Qt::NoModifier, QPoint(100, 11));
    }
    EXPECT_TRUE(mTold.empty());
    EXPECT_EQ(mSlider->GetValue(), kHalf);
    EXPECT_EQ(reaching.GetCount(), 2) << "they are the host's";
    PressHandle();
    QTest::mouseClick(GetQtSlider(), Qt::RightButton);
    EXPECT_EQ(mTold, Told{"start"}) << "the drag goes on";
}

TEST_F(UI_SliderTest, TheUserStaysInsideTheExtent) {
    mSlider->SetExtent({0.25, 0.75});
    const QPoint start = GetHandle().center();
    PressHandle();
    MoveTo(start + QPoint(500, 0));
    EXPECT_EQ(mSlider->GetValue(), 0.75);
    MoveTo(start - QPoint(500, 0));
    EXPECT_EQ(mSlider->GetValue(), 0.25);
    Release(start);
    GiveFocus();
    Key(Qt::Key_End);
    EXPECT_EQ(mSlider->GetValue(), 0.75);
    mSlider->SetValue(1.0);
    EXPECT_EQ(mSlider->GetValue(), 1.0) << "the program may go where the user cannot";
}

TEST_F(UI_SliderTest, AnExtentBesideTheRangeLeavesNothingToReach) {
    mSlider->SetExtent({5, 6});
    Press(QPoint(100, 11));
    Release(QPoint(100, 11));
    EXPECT_EQ(mTold, kNoChange);
    EXPECT_EQ(mSlider->GetValue(), kHalf);
}

TEST_F(UI_SliderTest, TheLargestRangeWorks) {
    const double largest = std::numeric_limits<double>::max();
    mSlider->SetValueRange({-largest, largest});
    mSlider->SetValue(0);
    const QPoint start = GetHandle().center();
    PressHandle();
    MoveTo(start + QPoint(10, 0));
    EXPECT_TRUE(std::isfinite(mSlider->GetValue()));
    EXPECT_GT(mSlider->GetValue(), 0);
    MoveTo(start + QPoint(500, 0));
    EXPECT_EQ(mSlider->GetValue(), largest);
}

TEST_F(UI_SliderTest, ASliderWithoutRoomIsHarmless) {
    mSlider->UI_SetLocalRectF({138, 0, 3, 3});
    Press(QPoint(1, 1));
    MoveTo(QPoint(2, 1));
    Release(QPoint(2, 1));
    EXPECT_GE(mSlider->GetValue(), 0.0);
    EXPECT_LE(mSlider->GetValue(), 1.0);
    EXPECT_EQ(mTold.front(), "start");
}

TEST_F(UI_SliderTest, AHandlerThatSetsTheValueDoesNotBreakTheDrag) {
    const auto quantise = [this](Message* message) {
        Write(*message);
        if (message->GetChangeMessage() == Message::kChange)
            mSlider->SetValue(std::round(mSlider->GetValue() * 10) / 10);
    };
    mSlider->NotifyWhenChangedInteractively(Handler<Interactive>(quantise));
    const QPoint start = GetHandle().center();
    PressHandle();
    for (int x = 1; x <= 60; ++x) MoveTo(start + QPoint(x, 0));
    EXPECT_EQ(mSlider->GetValue(), 1.0);
    Release(start + QPoint(60, 0));
    EXPECT_EQ(Shortened(), kWholeGesture);
}

TEST_F(UI_SliderTest, AReleaseThatWentElsewhereEndsTheDragWithTheNextMove) {
    PressHandle();
    MoveTo(GetHandle().center() + QPoint(10, 0));
    const double value = mSlider->GetValue();
    QMouseEvent hover(QEvent::MouseMove, QPointF(5, 5), GetQtSlider()->mapToGlobal(QPointF(5, 5)), Qt::NoButton,
                      Qt::NoButton, Qt::NoModifier);
    QCoreApplication::sendEvent(GetQtSlider(), &hover);
    EXPECT_TRUE(WaitToBeTold("changed"));
    EXPECT_EQ(Shortened(), kWholeGesture);
    EXPECT_EQ(mSlider->GetValue(), value);
}

// Directions

TEST_F(UI_SliderTest, TheDirectionOfTheLanguageChangesNothing) {
    QGuiApplication::setLayoutDirection(Qt::RightToLeft);
    mStage.ScrollAwayAndBack(*mSlider);
    mSlider->SetValue(0.1);
    EXPECT_LT(GetHandle().center().x(), 40);
    Press(QPoint(100, 11));
    Release(QPoint(100, 11));
    EXPECT_GT(mSlider->GetValue(), 0.7);
    Key(Qt::Key_Home);
    Key(Qt::Key_Right);
    EXPECT_NEAR(mSlider->GetValue(), 0.01, 1e-12);
    QGuiApplication::setLayoutDirection(Qt::LeftToRight);
}

TEST_F(UI_SliderTest, ReversedTheLowerEndIsAtTheRightAndArrowsMoveTheHandleTheirWay) {
    mSlider = AddSlider(kSliderHorizontal, true);
    Press(QPoint(119, 11));
    Release(QPoint(119, 11));
    EXPECT_EQ(mSlider->GetValue(), 0.0);
    Press(QPoint(0, 11));
    Release(QPoint(0, 11));
    EXPECT_EQ(mSlider->GetValue(), 1.0);
    Key(Qt::Key_Right);
    EXPECT_NEAR(mSlider->GetValue(), 0.99, 1e-12);
    Key(Qt::Key_Left);
    EXPECT_EQ(mSlider->GetValue(), 1.0);
    Key(Qt::Key_Down);
    EXPECT_NEAR(mSlider->GetValue(), 0.99, 1e-12);
    Key(Qt::Key_Home);
    EXPECT_EQ(mSlider->GetValue(), 0.0);
}

TEST_F(UI_SliderTest, AVerticalOneHasItsLowerEndAtTheBottomAndReversedAtTheTop) {
    for (const bool reversed : {false, true}) {
        mSlider = AddSlider(kSliderVertical, reversed);
        Press(QPoint(11, 119));
        Release(QPoint(11, 119));
        EXPECT_EQ(mSlider->GetValue(), reversed ? 1.0 : 0.0);
        const QPoint start = GetHandle().center();
        PressHandle();
        MoveTo(start - QPoint(0, 20));
        EXPECT_GT(mSlider->GetValue(), 0.1);
        EXPECT_LT(mSlider->GetValue(), 0.9);
        Release(start - QPoint(0, 20));
        const int before = GetHandle().top();
        for (int i = 0; i < 5; ++i) Key(Qt::Key_Up);
        EXPECT_LT(GetHandle().top(), before);
        mStage.GetRoot()->ChildRemove(mSlider);
    }
}

// Coming and going

TEST_F(UI_SliderTest, ComesBackTheSameAfterScrolling) {
    mSlider->SetValue(1.0 / 3.0);
    const QImage image = GetQtSlider()->grab().toImage();
    mStage.ScrollAwayAndBack(*mSlider);
    EXPECT_EQ(mSlider->GetValue(), 1.0 / 3.0);
    EXPECT_EQ(GetQtSlider()->grab().toImage(), image);
    EXPECT_TRUE(mTold.empty());
}

TEST_F(UI_SliderTest, ADraggedSliderStaysWhenItIsScrolledAway) {
    mSlider->SetWantsKeyboardFocus(false);
    const QPoint start = GetHandle().center();
    PressHandle();
    mStage.GetArea().verticalScrollBar()->setValue(19000);
    QCoreApplication::processEvents();
    ASSERT_NE(GetQtSlider(), nullptr);
    MoveTo(start + QPoint(10, 0));
    Release(start + QPoint(10, 0));
    EXPECT_EQ(mTold, kWholeGesture);
    EXPECT_TRUE(ProcessUntil([this] {
        mStage.GetArea().verticalScrollBar()->setValue(mStage.GetArea().verticalScrollBar()->value() == 19000 ? 18000
                                                                                                              : 19000);
        return GetQtSlider() == nullptr;
    }));
}

TEST_F(UI_SliderTest, TheFocusCanBeSeenHoweverItCame) {
    const QImage without = GetQtSlider()->grab().toImage();
    ASSERT_TRUE(mSlider->UI_GainKeyboardFocus(zelui::ui::kFocusByMouse));
    EXPECT_NE(GetQtSlider()->grab().toImage(), without);
}

// Styles keep pictures by the identity of the palette: one of its own for each slider would leave pictures behind with
// each editor that was ever open.
TEST_F(UI_SliderTest, AllAreDrawnWithOnePalette) {
    using zelui::ui::Theme;
    PaletteWatch watch;
    Theme::Get().Choose(Theme::kDark);
    GetQtSlider()->setStyle(&watch);
    const SliderPtr another = AddSlider(kSliderVertical, false);
    ControlStage::GetWidget<QSlider>(*another)->setStyle(&watch);
    GetQtSlider()->grab();
    ControlStage::GetWidget<QSlider>(*another)->grab();
    EXPECT_GE(watch.GetDrawn(), 2);
    EXPECT_EQ(watch.GetKeys().size(), 1u);
    Theme::Get().Choose(Theme::kSystem);
    GetQtSlider()->setStyle(nullptr);
    ControlStage::GetWidget<QSlider>(*another)->setStyle(nullptr);
}

TEST_F(UI_SliderTest, ADisabledOneTakesNoInput) {
    mSlider->UI_SetDisabled(true);
    Press(QPoint(100, 11));
    Release(QPoint(100, 11));
    Key(Qt::Key_Right);
    EXPECT_EQ(mSlider->GetValue(), kHalf);
    EXPECT_TRUE(mTold.empty());
}

}  // namespace zeltests
