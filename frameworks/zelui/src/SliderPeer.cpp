#include "SliderPeer.h"

#include <algorithm>
#include <cmath>

#include "CallOut.h"
#include "LateGestureEnds.h"

namespace zelui {
namespace controls {

namespace {

// Steps add up to the ends only nearly.
constexpr double kRoundingError = 1e-9;

double SnapToEnds(double position) {
    if (position < kRoundingError) return 0.0;
    return position > 1.0 - kRoundingError ? 1.0 : position;
}

}  // namespace

UI_Slider::SliderPeer::SliderPeer(UI_Slider& slider) : ControlPeer(slider) {}

UI_Slider::SliderPeer::~SliderPeer() {
    if (GetWidget() != nullptr) GetSliderWidget().LetGoOfClient();
    InterruptGesture();
}

bool UI_Slider::SliderPeer::CanBeReleased() const { return !mGesture && ControlPeer::CanBeReleased(); }

QWidget* UI_Slider::SliderPeer::MakeControl(QWidget& parent) {
    const bool across = GetSlider().GetDirection() == kSliderHorizontal;
    return new SliderWidget(parent, *this, across ? Qt::Horizontal : Qt::Vertical, GetSlider().IsReversed());
}

void UI_Slider::SliderPeer::OnSync() {
    ControlPeer::OnSync();
    GetSliderWidget().ShowPosition();
}

bool UI_Slider::SliderPeer::UsesKey(const QKeyEvent& key) const { return GetSliderWidget().UsesKey(key); }

// Values and positions

// By halves: the distance of two values may be more than a double holds.
double UI_Slider::SliderPeer::GetPosition() const {
    const Range& range = GetSlider().GetValueRange();
    const double position = (GetSlider().GetValue() / 2 - range.first / 2) / (range.second / 2 - range.first / 2);
    return std::clamp(position, 0.0, 1.0);
}

double UI_Slider::SliderPeer::GetValueAt(double position) const {
    const Range& range = GetSlider().GetValueRange();
    if (position <= 0.0) return range.first;
    if (position >= 1.0) return range.second;
    return std::lerp(range.first, range.second, position);
}

double UI_Slider::SliderPeer::GetValue() const { return GetSlider().GetValue(); }

double UI_Slider::SliderPeer::GetMinimum() const {
    return std::max(GetSlider().GetValueRange().first, GetSlider().GetExtent().first);
}

double UI_Slider::SliderPeer::GetMaximum() const {
    return std::min(GetSlider().GetValueRange().second, GetSlider().GetExtent().second);
}

// Gestures

/// True when the gesture goes on: the host's code may have ended it, or this.
bool UI_Slider::SliderPeer::Tell(const SliderPtr& slider, Message::ChangeMessage message) {
    const QPointer<QObject> self(this);
    CallOut("A slider's handler", [&slider, message] { slider->TellGesture(message); });
    return self && mGesture;
}

void UI_Slider::SliderPeer::BeginGesture() {
    const SliderPtr slider(&GetSlider());
    const QPointer<QObject> self(this);
    LateGestureEnds::TellAll();
    if (!self || mGesture || GetWidget() == nullptr || !GetWidget()->isEnabled()) return;
    mGesture = Gesture{slider->GetValue(), GetPosition(), false};
    Tell(slider, Message::kStart);
}

void UI_Slider::SliderPeer::Take(double value) {
    const SliderPtr slider(&GetSlider());
    if (!slider->TakeUserValue(value)) return;
    mGesture->changed = true;
    Tell(slider, Message::kChange);
}

void UI_Slider::SliderPeer::MoveTo(double position) {
    if (!mGesture) return;
    // Back where it began it has the value of then, whatever that rounds to.
    Take(position == mGesture->startPosition ? mGesture->startValue : GetValueAt(position));
}

void UI_Slider::SliderPeer::MoveBy(double distance) { MoveTo(SnapToEnds(GetPosition() + distance)); }

void UI_Slider::SliderPeer::FinishGesture() {
    if (!mGesture) return;
    const SliderPtr slider(&GetSlider());
    const bool changed = mGesture->changed;
    mGesture.reset();
    Tell(slider, changed ? Message::kEnd : Message::kCancel);
}

void UI_Slider::SliderPeer::RevertGesture() {
    if (!mGesture) return;
    const SliderPtr slider(&GetSlider());
    const double value = slider->GetValue();
    slider->SetValue(mGesture->startValue);
    if (slider->GetValue() != value && !Tell(slider, Message::kChange)) return;
    mGesture.reset();
    Tell(slider, Message::kCancel);
}

void UI_Slider::SliderPeer::InterruptGesture() {
    if (!mGesture) return;
    const SliderPtr slider(&GetSlider());
    const Message::ChangeMessage message = mGesture->changed ? Message::kEnd : Message::kCancel;
    mGesture.reset();
    LateGestureEnds::Add(slider, [target = slider.get(), message] { target->TellGesture(message); });
}

void UI_Slider::SliderPeer::StepBy(double distance) {
    const SliderPtr slider(&GetSlider());
    const QPointer<QObject> self(this);
    BeginGesture();
    if (self) MoveBy(distance);
    if (self) FinishGesture();
}

void UI_Slider::SliderPeer::SetByUser(double value) {
    const SliderPtr slider(&GetSlider());
    const QPointer<QObject> self(this);
    BeginGesture();
    if (self && mGesture) Take(value);
    if (self) FinishGesture();
}

}  // namespace controls
}  // namespace zelui
