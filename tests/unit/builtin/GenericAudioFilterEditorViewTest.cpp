#include <memory>
#include <set>

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <QApplication>
#include <QLabel>
#include <QScrollArea>
#include <QScrollBar>
#include <QSlider>
#include <QStyleOptionSlider>
#include <QTest>
#include <qtestspontaneevent.h>
#include <zelaudiofilterhostui/GenericAudioFilterEditorView.h>
#include <zelcore/Utf.h>
#include <zelui/QtAccessibility.h>
#include <zelui/QtBridge.h>
#include <zelui/UI_NodeManager.h>
#include <zelui/UI_Slider.h>
#include <zelui/UI_StaticText.h>

#include "support/WaitFor.h"
#include "unit/views/AudioFilterDouble.h"

namespace zeltests {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;
using zelaudiofilterhostui::GenericAudioFilterEditorView;
using zelcore::geom::RectF;
using zelui::controls::UI_Slider;
using zelui::controls::UI_StaticText;
using zelui::ui::UI_Node;

namespace {

typedef boost::intrusive_ptr<AudioFilterDouble> FilterPtr;
typedef boost::intrusive_ptr<GenericAudioFilterEditorView> ViewPtr;

enum Column : std::size_t { kName, kSlider, kValue, kUnit };

FilterPtr MakeFilter(std::size_t count, float value = 0.5f) {
    std::vector<AudioFilterDouble::Parameter> parameters;
    for (std::size_t i = 0; i < count; ++i) parameters.push_back({"P" + std::to_string(i), "dB", value});
    return new AudioFilterDouble(parameters);
}

UI_Node& GetRow(const ViewPtr& view, std::size_t row) { return *view->ChildAt(row); }

template <typename T>
T& GetControl(const ViewPtr& view, std::size_t row, Column column) {
    return dynamic_cast<T&>(*GetRow(view, row).UI_AsContainer()->ChildAt(column));
}

std::string GetText(const ViewPtr& view, std::size_t row, Column column) {
    const zelcore::utf8string text =
        zelcore::utility::UTF16to8(GetControl<UI_StaticText>(view, row, column).GetValue());
    return std::string(text.begin(), text.end());
}

std::string Set(int index, float value) { return "set " + std::to_string(index) + " " + std::to_string(value); }

bool ProcessUntil(const std::function<bool()>& condition) {
    return WaitFor(condition, std::chrono::seconds(20), [] {
        QCoreApplication::processEvents();
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    });
}

/// The view in a scroll area on the (offscreen) screen, as hosts show it.
class ShownView {
public:
    explicit ShownView(const ViewPtr& view) {
        mArea.setWidget(new zelui::qt::NodeWidget(view));
        mArea.resize(420, 300);
        mArea.show();
        mArea.activateWindow();
        EXPECT_TRUE(QTest::qWaitForWindowActive(&mArea));
    }
    QScrollArea& GetArea() { return mArea; }

private:
    QScrollArea mArea;
};

/// A shown view whose sliders are moved by input events.
class GenericAudioFilterEditorViewTest : public testing::Test {
protected:
    void Show(const FilterPtr& filter) {
        mFilter = filter;
        mView = GenericAudioFilterEditorView::Create(filter);
        mShown = std::make_unique<ShownView>(mView);
        mFilter->ForgetCalls();
    }

    QSlider& GetSlider(std::size_t row) {
        return dynamic_cast<QSlider&>(*zelui::qt::GetWidget(GetControl<UI_Slider>(mView, row, kSlider)));
    }
    double GetSliderValue(std::size_t row) { return GetControl<UI_Slider>(mView, row, kSlider).GetValue(); }

    static QPoint GetHandle(const QSlider& slider) {
        QStyleOptionSlider option;
        option.initFrom(&slider);
        option.orientation = slider.orientation();
        option.minimum = slider.minimum();
        option.maximum = slider.maximum();
        option.sliderPosition = slider.sliderPosition();
        option.sliderValue = slider.value();
        option.subControls = QStyle::SC_SliderHandle;
        return slider.style()->subControlRect(QStyle::CC_Slider, &option, QStyle::SC_SliderHandle, &slider).center();
    }

    static void Move(QSlider& slider, const QPoint& point) {
        QMouseEvent move(QEvent::MouseMove, point, slider.mapToGlobal(point), Qt::NoButton, Qt::LeftButton,
                         Qt::NoModifier);
        QApplication::sendEvent(&slider, &move);
    }

    FilterPtr mFilter;
    ViewPtr mView;
    std::unique_ptr<ShownView> mShown;
};

}  // namespace

// Layout

TEST_F(GenericAudioFilterEditorViewTest, AFilterWithoutParametersGivesAViewWithoutRowsAndHeight) {
    const ViewPtr view = GenericAudioFilterEditorView::Create(MakeFilter(0));
    EXPECT_EQ(view->ChildCount(), 0u);
    EXPECT_EQ(view->UI_GetLocalRectF(true), (RectF{0.0f, 0.0f, 380.0f, 0.0f}));
}

TEST_F(GenericAudioFilterEditorViewTest, ThreeParametersGiveThreeRowsWithoutGaps) {
    const ViewPtr view = GenericAudioFilterEditorView::Create(MakeFilter(3));
    ASSERT_EQ(view->ChildCount(), 3u);
    EXPECT_EQ(GetRow(view, 0).UI_GetLocalRectF(), (RectF{0.0f, 0.0f, 380.0f, 22.0f}));
    EXPECT_EQ(GetRow(view, 1).UI_GetLocalRectF(), (RectF{0.0f, 22.0f, 380.0f, 22.0f}));
    EXPECT_EQ(GetRow(view, 2).UI_GetLocalRectF(), (RectF{0.0f, 44.0f, 380.0f, 22.0f}));
    EXPECT_EQ(view->UI_GetLocalRectF(true), (RectF{0.0f, 0.0f, 380.0f, 66.0f}));
}

TEST_F(GenericAudioFilterEditorViewTest, TheColumnsOfEveryRowStandWhereTheyShould) {
    const ViewPtr view = GenericAudioFilterEditorView::Create(MakeFilter(3));
    for (std::size_t row = 0; row < 3; ++row) {
        ASSERT_EQ(GetRow(view, row).UI_AsContainer()->ChildCount(), 4u);
        EXPECT_TRUE(GetRow(view, row).UI_IsShown());
        const RectF frames[] = {{4.0f, 0.0f, 130.0f, 22.0f},
                                {138.0f, 0.0f, 120.0f, 22.0f},
                                {262.0f, 0.0f, 60.0f, 22.0f},
                                {326.0f, 0.0f, 50.0f, 22.0f}};
        for (std::size_t column = 0; column < 4; ++column) {
            const UI_Node& control = *GetRow(view, row).UI_AsContainer()->ChildAt(column);
            EXPECT_EQ(control.UI_GetLocalRectF(), frames[column]) << row << ", " << column;
            EXPECT_TRUE(control.UI_IsShown());
        }
    }
}

TEST_F(GenericAudioFilterEditorViewTest, TheWidgetsStandExactlyOnTheFrames) {
    Show(MakeFilter(3));
    for (std::size_t row = 0; row < 3; ++row) {
        const QWidget* const rowWidget = zelui::qt::GetWidget(GetRow(mView, row));
        ASSERT_NE(rowWidget, nullptr);
        EXPECT_EQ(rowWidget->geometry(), QRect(0, int(row) * 22, 380, 22));
        const QRect frames[] = {{4, 0, 130, 22}, {138, 0, 120, 22}, {262, 0, 60, 22}, {326, 0, 50, 22}};
        for (std::size_t column = 0; column < 4; ++column) {
            const QWidget* const widget = zelui::qt::GetWidget(*GetRow(mView, row).UI_AsContainer()->ChildAt(column));
            ASSERT_NE(widget, nullptr);
            EXPECT_EQ(widget->geometry(), frames[column]) << row << ", " << column;
            EXPECT_TRUE(widget->isVisible());
        }
    }
    EXPECT_EQ(mShown->GetArea().widget()->size(), QSize(380, 66));
}

TEST_F(GenericAudioFilterEditorViewTest, ARowShowsNameValueTextAndUnit) {
    const FilterPtr filter(new AudioFilterDouble({{"Gain", "dB", 0.25f}}));
    const ViewPtr view = GenericAudioFilterEditorView::Create(filter);
    EXPECT_EQ(GetText(view, 0, kName), "Gain");
    EXPECT_EQ(GetText(view, 0, kValue), "0.250000!");
    EXPECT_EQ(GetText(view, 0, kUnit), "dB");
    const UI_Slider& slider = GetControl<UI_Slider>(view, 0, kSlider);
    EXPECT_EQ(slider.GetValue(), 0.25);
    EXPECT_EQ(slider.GetValueRange(), std::make_pair(0.0, 1.0));
    EXPECT_EQ(slider.GetExtent(), std::make_pair(0.0, 1.0));
    EXPECT_EQ(slider.GetDirection(), 0);
    EXPECT_EQ(int(GetControl<UI_StaticText>(view, 0, kValue).GetAlignment()), 2);
    EXPECT_EQ(int(GetControl<UI_StaticText>(view, 0, kName).GetAlignment()), 0);
    EXPECT_THAT(filter->GetCalls(), IsEmpty());
}

// Gestures

TEST_F(GenericAudioFilterEditorViewTest, PressingAndReleasingWithoutAMoveSendsNoValue) {
    Show(MakeFilter(3));
    QSlider& slider = GetSlider(1);
    QTest::mousePress(&slider, Qt::LeftButton, {}, GetHandle(slider));
    QTest::mouseRelease(&slider, Qt::LeftButton, {}, GetHandle(slider));
    EXPECT_THAT(mFilter->GetCalls(), IsEmpty());
    EXPECT_EQ(GetSliderValue(1), 0.5);
}

TEST_F(GenericAudioFilterEditorViewTest, ADragSendsOneValueForEachChangeAndOneMoreAtItsEnd) {
    Show(MakeFilter(3));
    QSlider& slider = GetSlider(1);
    const QPoint handle = GetHandle(slider);
    QTest::mousePress(&slider, Qt::LeftButton, {}, handle);
    EXPECT_THAT(mFilter->GetCalls(), IsEmpty());
    std::vector<std::string> expected;
    for (const int distance : {10, 20, 15}) {
        Move(slider, handle + QPoint(distance, 0));
        expected.push_back(Set(1, float(GetSliderValue(1))));
        EXPECT_EQ(mFilter->GetCalls(), expected);
        EXPECT_EQ(GetText(mView, 1, kValue), std::to_string(float(GetSliderValue(1))) + "!");
    }
    EXPECT_EQ(std::set<std::string>(expected.begin(), expected.end()).size(), 3u);
    QTest::mouseRelease(&slider, Qt::LeftButton, {}, handle + QPoint(15, 0));
    expected.push_back(expected.back());
    EXPECT_EQ(mFilter->GetCalls(), expected);
    EXPECT_EQ(GetText(mView, 0, kValue), "0.500000!");
}

TEST_F(GenericAudioFilterEditorViewTest, AMoveThatChangesNothingSendsNothing) {
    Show(MakeFilter(1));
    QSlider& slider = GetSlider(0);
    const QPoint handle = GetHandle(slider);
    QTest::mousePress(&slider, Qt::LeftButton, {}, handle);
    Move(slider, handle + QPoint(0, 3));
    Move(slider, handle);
    QTest::mouseRelease(&slider, Qt::LeftButton, {}, handle);
    EXPECT_THAT(mFilter->GetCalls(), IsEmpty());
}

TEST_F(GenericAudioFilterEditorViewTest, TheEndsReachTheFilterExactlyAndNothingBeyondThem) {
    Show(MakeFilter(1));
    QSlider& slider = GetSlider(0);
    const QPoint handle = GetHandle(slider);
    QTest::mousePress(&slider, Qt::LeftButton, {}, handle);
    Move(slider, handle + QPoint(500, 0));
    EXPECT_EQ(mFilter->GetParameterValue(0), 1.0f);
    Move(slider, handle - QPoint(500, 0));
    EXPECT_EQ(mFilter->GetParameterValue(0), 0.0f);
    Move(slider, handle + QPoint(900, 0));
    QTest::mouseRelease(&slider, Qt::LeftButton, {}, handle + QPoint(900, 0));
    EXPECT_THAT(mFilter->GetCalls(), ElementsAre(Set(0, 1.0f), Set(0, 0.0f), Set(0, 1.0f), Set(0, 1.0f)));
    EXPECT_EQ(mFilter->GetParameterValue(0), 1.0f);
}

TEST_F(GenericAudioFilterEditorViewTest, AKeyIsAGestureFromItsPressToItsRelease) {
    Show(MakeFilter(2));
    QSlider& slider = GetSlider(1);
    slider.setFocus();
    QTest::keyPress(&slider, Qt::Key_Right);
    EXPECT_THAT(mFilter->GetCalls(), ElementsAre(Set(1, 0.51f)));
    QTest::keyRelease(&slider, Qt::Key_Right);
    EXPECT_THAT(mFilter->GetCalls(), ElementsAre(Set(1, 0.51f), Set(1, 0.51f)));
    EXPECT_EQ(GetText(mView, 1, kValue), "0.510000!");
    mFilter->ForgetCalls();
    QTest::keyClick(&slider, Qt::Key_End);
    EXPECT_THAT(mFilter->GetCalls(), ElementsAre(Set(1, 1.0f), Set(1, 1.0f)));
    mFilter->ForgetCalls();
    QTest::keyClick(&slider, Qt::Key_End);
    EXPECT_THAT(mFilter->GetCalls(), IsEmpty());
}

TEST_F(GenericAudioFilterEditorViewTest, EscapeTakesTheValueBackAndEndsWithoutAFinalOne) {
    Show(MakeFilter(1));
    QSlider& slider = GetSlider(0);
    slider.setFocus();
    const QPoint handle = GetHandle(slider);
    QTest::mousePress(&slider, Qt::LeftButton, {}, handle);
    Move(slider, handle + QPoint(20, 0));
    const float moved = float(GetSliderValue(0));
    QTest::keyClick(&slider, Qt::Key_Escape);
    QTest::mouseRelease(&slider, Qt::LeftButton, {}, handle + QPoint(20, 0));
    EXPECT_THAT(mFilter->GetCalls(), ElementsAre(Set(0, moved), Set(0, 0.5f)));
    EXPECT_EQ(GetText(mView, 0, kValue), "0.500000!");
}

TEST_F(GenericAudioFilterEditorViewTest, TheWheelScrollsAndChangesNothing) {
    Show(MakeFilter(100));
    QSlider& slider = GetSlider(3);
    // By way of its window and as the system's own, as the wheel really comes: only of those does Qt pass on to the
    // widgets round the slider what it ignores.
    const QPoint point = slider.mapTo(slider.window(), slider.rect().center());
    QWheelEvent wheel(point, slider.window()->mapToGlobal(point), QPoint(), QPoint(0, -120), Qt::NoButton,
                      Qt::NoModifier, Qt::NoScrollPhase, false);
    QSpontaneKeyEvent::setSpontaneous(&wheel);
    qApp->notify(slider.window()->windowHandle(), &wheel);
    EXPECT_THAT(mFilter->GetCalls(), IsEmpty());
    EXPECT_GT(mShown->GetArea().verticalScrollBar()->value(), 0);
}

// What happens elsewhere

TEST_F(GenericAudioFilterEditorViewTest, ValuesChangedElsewhereShowInTheNextViewOnly) {
    const FilterPtr filter = MakeFilter(1);
    const ViewPtr view = GenericAudioFilterEditorView::Create(filter);
    filter->SetParameterValue(0, 0.75f);
    EXPECT_EQ(GetControl<UI_Slider>(view, 0, kSlider).GetValue(), 0.5);
    EXPECT_EQ(GetText(view, 0, kValue), "0.500000!");
    const ViewPtr next = GenericAudioFilterEditorView::Create(filter);
    EXPECT_EQ(GetControl<UI_Slider>(next, 0, kSlider).GetValue(), 0.75);
    EXPECT_EQ(GetText(next, 0, kValue), "0.750000!");
}

TEST_F(GenericAudioFilterEditorViewTest, AFilterThatLosesItsParametersWhileShownIsHarmless) {
    Show(MakeFilter(5));
    mFilter->GetParameters().resize(2);
    QTest::keyClick(&GetSlider(4), Qt::Key_Right);
    EXPECT_THAT(mFilter->GetCalls(), ElementsAre(Set(4, 0.51f), Set(4, 0.51f)));
    EXPECT_EQ(GetText(mView, 4, kValue), "");
    EXPECT_EQ(mView->ChildCount(), 5u);
}

TEST_F(GenericAudioFilterEditorViewTest, AFilterThatGetsMoreParametersWhileShownKeepsItsRows) {
    Show(MakeFilter(2));
    mFilter->GetParameters().resize(50);
    QTest::keyClick(&GetSlider(1), Qt::Key_Left);
    EXPECT_THAT(mFilter->GetCalls(), ElementsAre(Set(1, 0.49f), Set(1, 0.49f)));
    EXPECT_EQ(mView->ChildCount(), 2u);
}

TEST_F(GenericAudioFilterEditorViewTest, ASliderThatOutlivesItsViewCallsNobody) {
    const FilterPtr filter = MakeFilter(1);
    ViewPtr view = GenericAudioFilterEditorView::Create(filter);
    const boost::intrusive_ptr<UI_Slider> slider(&GetControl<UI_Slider>(view, 0, kSlider));
    view.reset();
    zelui::qt::NodeWidget window(slider);
    window.show();
    slider->UI_GainKeyboardFocus(zelui::ui::kFocusByProgram);
    QTest::keyClick(zelui::qt::GetWidget(*slider), Qt::Key_Right);
    EXPECT_EQ(slider->GetValue(), 0.51);
    EXPECT_THAT(filter->GetCalls(), IsEmpty());
}

TEST_F(GenericAudioFilterEditorViewTest, AFilterMayEndTheViewWhileItsParameterIsSet) {
    struct Filter : AudioFilterDouble {
        Filter() : AudioFilterDouble({{"Gain", "dB", 0.5f}}) {}
        void SetParameterValue(int index, float value) override {
            AudioFilterDouble::SetParameterValue(index, value);
            if (onSet) onSet();
        }
        std::function<void()> onSet;
    };
    const boost::intrusive_ptr<Filter> filter(new Filter);
    Show(filter);
    filter->onSet = [this] {
        mView.reset();
        mShown.reset();
    };
    QTest::keyPress(&GetSlider(0), Qt::Key_Right);
    EXPECT_THAT(filter->GetCalls(), ElementsAre(Set(0, 0.51f)));
    EXPECT_EQ(mShown, nullptr);
}

TEST_F(GenericAudioFilterEditorViewTest, AnyTextIsShownAsItIs) {
    const std::string longName(300, 'W');
    const FilterPtr filter(new AudioFilterDouble({{"", "", 0.0f},
                                                  {longName, longName, 0.1f},
                                                  {"Lautstärke &amp; <b>Höhe</b>", "µs", 0.2f},
                                                  {"音量", "分贝", 0.3f},
                                                  {"Two\nlines\tand a tab", "%", 0.4f}}));
    Show(filter);
    ASSERT_EQ(mView->ChildCount(), 5u);
    EXPECT_EQ(mShown->GetArea().widget()->size(), QSize(380, 110));
    const auto getLabel = [this](std::size_t row, Column column) {
        return dynamic_cast<QLabel*>(zelui::qt::GetWidget(GetControl<UI_StaticText>(mView, row, column)));
    };
    for (std::size_t row = 0; row < 5; ++row) {
        const QLabel* const label = getLabel(row, kName);
        ASSERT_NE(label, nullptr);
        EXPECT_EQ(label->geometry(), QRect(4, 0, 130, 22));
        EXPECT_LE(label->fontMetrics().horizontalAdvance(label->text()), 130);
    }
    EXPECT_EQ(getLabel(0, kName)->text(), QString());
    EXPECT_TRUE(getLabel(1, kName)->text().endsWith(QChar(0x2026)));
    EXPECT_TRUE(getLabel(1, kName)->toolTip().contains("WWW"));
    EXPECT_EQ(getLabel(2, kName)->textFormat(), Qt::PlainText);
    EXPECT_EQ(getLabel(3, kName)->text(), QString::fromUtf8("音量"));
    EXPECT_EQ(getLabel(4, kName)->text(), "Two lines and a tab");
}

TEST_F(GenericAudioFilterEditorViewTest, ASliderIsKnownToScreenReadersByItsParametersName) {
    Show(MakeFilter(3));
    EXPECT_EQ(zelui::qt::GetAccessibleName(GetSlider(0)), "P0");
    EXPECT_EQ(zelui::qt::GetAccessibleName(GetSlider(2)), "P2");
}

// Many

TEST_F(GenericAudioFilterEditorViewTest, OfManyRowsOnlyThoseInViewHaveWidgets) {
    const qsizetype before = QApplication::allWidgets().size();
    Show(MakeFilter(2000));
    EXPECT_EQ(mView->ChildCount(), 2000u);
    EXPECT_EQ(mView->UI_GetLocalRectF(), (RectF{0.0f, 0.0f, 380.0f, 44000.0f}));
    EXPECT_LT(QApplication::allWidgets().size() - before, 300);
    EXPECT_NE(zelui::qt::GetWidget(GetRow(mView, 0)), nullptr);
    EXPECT_EQ(zelui::qt::GetWidget(GetRow(mView, 1000)), nullptr);
    QScrollBar& bar = *mShown->GetArea().verticalScrollBar();
    for (int y = 0; y < bar.maximum(); y += 200) bar.setValue(y);
    bar.setValue(bar.maximum());
    EXPECT_NE(zelui::qt::GetWidget(GetRow(mView, 1999)), nullptr);
    EXPECT_EQ(zelui::qt::GetWidget(GetRow(mView, 5)), nullptr);
    EXPECT_TRUE(ProcessUntil([before] { return QApplication::allWidgets().size() - before < 600; }));
    QTest::keyClick(&GetSlider(1999), Qt::Key_Right);
    EXPECT_THAT(mFilter->GetCalls(), ElementsAre(Set(1999, 0.51f), Set(1999, 0.51f)));
}

TEST_F(GenericAudioFilterEditorViewTest, TheTabKeyGoesThroughTheSlidersInTheirOrderAndScrollsWithThem) {
    Show(MakeFilter(200));
    UI_Node& first = GetControl<UI_Slider>(mView, 0, kSlider);
    ASSERT_TRUE(first.UI_GainKeyboardFocus(zelui::ui::kFocusByProgram));
    for (std::size_t row = 1; row < 200; ++row) {
        QTest::keyClick(mShown->GetArea().window()->focusWidget(), Qt::Key_Tab);
        const UI_Slider& slider = GetControl<UI_Slider>(mView, row, kSlider);
        ASSERT_TRUE(slider.UI_HasKeyboardFocus(false)) << row;
        ASSERT_FALSE(zelui::qt::GetWidget(slider)->visibleRegion().isEmpty()) << row;
    }
    QTest::keyClick(mShown->GetArea().window()->focusWidget(), Qt::Key_Backtab);
    EXPECT_TRUE(GetControl<UI_Slider>(mView, 198, kSlider).UI_HasKeyboardFocus(false));
}

TEST_F(GenericAudioFilterEditorViewTest, AThousandViewsOpenedAndClosedLeaveNothingBehind) {
    const FilterPtr filter = MakeFilter(5);
    ProcessUntil([] { return true; });
    const std::size_t nodes = zelui::ui::UI_NodeManager::Get(false).GetNodeCount();
    const qsizetype widgets = QApplication::allWidgets().size();
    for (int i = 0; i < 1000; ++i) {
        const ViewPtr view = GenericAudioFilterEditorView::Create(filter);
        zelui::qt::NodeWidget window(view);
        window.show();
        ASSERT_NE(zelui::qt::GetWidget(GetRow(view, 4)), nullptr);
        ASSERT_GT(zelui::ui::UI_NodeManager::Get(false).GetNodeCount(), nodes);
    }
    EXPECT_EQ(zelui::ui::UI_NodeManager::Get(false).GetNodeCount(), nodes);
    EXPECT_TRUE(ProcessUntil([widgets] { return QApplication::allWidgets().size() == widgets; }));
    EXPECT_EQ(filter->GetRefCount(), 1);
    EXPECT_EQ(AudioFilterDouble::GetLiveCount(), 1);
}

TEST_F(GenericAudioFilterEditorViewTest, AViewThatGoesBeforeItsWindowLeavesAnEmptyOne) {
    const std::size_t nodes = zelui::ui::UI_NodeManager::Get(false).GetNodeCount();
    Show(MakeFilter(5));
    mView.reset();
    EXPECT_GT(zelui::ui::UI_NodeManager::Get(false).GetNodeCount(), nodes);
    mShown.reset();
    EXPECT_EQ(zelui::ui::UI_NodeManager::Get(false).GetNodeCount(), nodes);
    EXPECT_EQ(mFilter->GetRefCount(), 1);
}

}  // namespace zeltests
