#pragma once

#include <algorithm>

#include <gtest/gtest.h>
#include <QSlider>
#include <QStyle>
#include <QStyleOptionSlider>
#include <zelui/UI_Slider.h>

#include "ControlStage.h"

namespace zeltests {

/// What a slider told, in words: start, change, end, cancel, and "changed" for the function that is not interactive.
typedef std::vector<std::string> Told;

/// A stage with a slider whose messages are written down.
class SliderStage : public ::testing::Test {
protected:
    typedef zelui::controls::UI_InteractiveControlChangedMessage Message;
    typedef zelui::controls::UI_InteractiveControlView::InteractivelyChangedFunction Interactive;
    typedef boost::intrusive_ptr<zelui::controls::UI_Slider> SliderPtr;
    static constexpr double kHalf = 0.5;

    explicit SliderStage(zelui::controls::SliderDirection direction = zelui::controls::kSliderHorizontal,
                         bool reversed = false)
        : mSlider(AddSlider(direction, reversed)) {
        mSlider->SetValue(kHalf);
    }

    SliderPtr AddSlider(zelui::controls::SliderDirection direction, bool reversed) {
        const bool across = direction == zelui::controls::kSliderHorizontal;
        const zelcore::geom::RectF frame =
            across ? zelcore::geom::RectF{138, 0, 120, 22} : zelcore::geom::RectF{10, 30, 22, 120};
        const SliderPtr slider = mStage.Add(new zelui::controls::UI_Slider(direction, reversed), frame);
        Watch(*slider);
        return slider;
    }

    void Watch(zelui::controls::UI_Slider& slider) {
        slider.NotifyWhenChangedInteractively(Handler<Interactive>([this](Message* message) { Write(*message); }));
        slider.NotifyWhenChanged(Handler<zelui::controls::UI_ControlView::ChangedFunction>(
            [this](zelui::controls::UI_ControlChangedMessage*) { mTold.emplace_back("changed"); }));
    }

    void Write(const Message& message) {
        const char* const words[] = {"start", "change", "end", "cancel"};
        mTold.emplace_back(words[message.GetChangeMessage()]);
    }

    /// What was told, without repetitions of the same.
    Told Shortened() const {
        Told told = mTold;
        told.erase(std::unique(told.begin(), told.end()), told.end());
        return told;
    }

    QSlider* GetQtSlider() const { return ControlStage::GetWidget<QSlider>(*mSlider); }

    QRect GetHandle() const {
        QStyleOptionSlider option;
        option.initFrom(GetQtSlider());
        option.orientation = GetQtSlider()->orientation();
        option.maximum = GetQtSlider()->maximum();
        option.sliderPosition = GetQtSlider()->sliderPosition();
        const bool vertical = option.orientation == Qt::Vertical;
        option.upsideDown = vertical ? !GetQtSlider()->invertedAppearance() : GetQtSlider()->invertedAppearance();
        return GetQtSlider()->style()->subControlRect(QStyle::CC_Slider, &option, QStyle::SC_SliderHandle,
                                                      GetQtSlider());
    }

    void Press(const QPoint& point) { QTest::mousePress(GetQtSlider(), Qt::LeftButton, Qt::NoModifier, point); }
    void PressHandle() { Press(GetHandle().center()); }
    void Release(const QPoint& point) { QTest::mouseRelease(GetQtSlider(), Qt::LeftButton, Qt::NoModifier, point); }
    void MoveTo(const QPoint& point, Qt::KeyboardModifiers modifiers = Qt::NoModifier) {
        QMouseEvent event(QEvent::MouseMove, QPointF(point), GetQtSlider()->mapToGlobal(QPointF(point)), Qt::NoButton,
                          Qt::LeftButton, modifiers);
        QCoreApplication::sendEvent(GetQtSlider(), &event);
    }
    void GiveFocus() { ASSERT_TRUE(mSlider->UI_GainKeyboardFocus(zelui::ui::kFocusByProgram)); }
    void Key(int key, Qt::KeyboardModifiers modifiers = Qt::NoModifier) {
        SendKey(GetQtSlider(), QEvent::KeyPress, key, false, modifiers);
        SendKey(GetQtSlider(), QEvent::KeyRelease, key, false, modifiers);
    }
    bool WaitToBeTold(const std::string& last) {
        return ProcessUntil([&] { return !mTold.empty() && mTold.back() == last; });
    }

    ControlStage mStage;
    Told mTold;
    SliderPtr mSlider;
};

}  // namespace zeltests
