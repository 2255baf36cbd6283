#include "SliderWidget.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>

#include <QKeyEvent>
#include <QMouseEvent>
#include <QPointer>
#include <QStyle>
#include <QStyleOptionSlider>
#include <QStylePainter>
#include <QWheelEvent>

#include "SharedPalette.h"
#include "SliderAccessibility.h"

namespace zelui {

namespace {

// What the style paints by; finer than the pixels of any screen.
constexpr int kTicks = 1000000;

constexpr double kStep = 0.01;
constexpr double kFineStep = 0.001;
constexpr double kPage = 0.1;
constexpr double kFineDrag = 0.1;
constexpr int kWheelNotch = 120;

bool IsFine(const QInputEvent& event) { return (event.modifiers() & Qt::ShiftModifier) != 0; }

bool IsShortcut(const QInputEvent& event) {
    return (event.modifiers() & (Qt::ControlModifier | Qt::AltModifier | Qt::MetaModifier)) != 0;
}

}  // namespace

double SliderWidget::Track::GetPosition(double pixel) const {
    const double position = (pixel - handleLength / 2 - start) / length;
    return upsideDown ? 1.0 - position : position;
}

double SliderWidget::Track::GetDistance(double pixels) const { return (upsideDown ? -pixels : pixels) / length; }

SliderWidget::SliderWidget(QWidget& parent, Client& client, Qt::Orientation orientation, bool reversed)
    : QSlider(orientation, &parent), mClient(&client) {
    InstallSliderAccessible();
    setRange(0, kTicks);
    setInvertedAppearance(reversed);
    // A value grows in the direction that the program has chosen, in whatever language its name is written.
    setLayoutDirection(Qt::LeftToRight);
}

void SliderWidget::LetGoOfClient() {
    mClient = nullptr;
    LetGo();
}

void SliderWidget::ShowPosition() { setValue(static_cast<int>(std::lround(mClient->GetPosition() * kTicks))); }

// Geometry

double SliderWidget::Along(const QPointF& point) const {
    return orientation() == Qt::Horizontal ? point.x() : point.y();
}

QRect SliderWidget::GetHandle() const {
    QStyleOptionSlider option;
    initStyleOption(&option);
    return style()->subControlRect(QStyle::CC_Slider, &option, QStyle::SC_SliderHandle, this);
}

SliderWidget::Track SliderWidget::GetTrack() const {
    QStyleOptionSlider option;
    initStyleOption(&option);
    const QRect groove = style()->subControlRect(QStyle::CC_Slider, &option, QStyle::SC_SliderGroove, this);
    const QRect handle = style()->subControlRect(QStyle::CC_Slider, &option, QStyle::SC_SliderHandle, this);
    const bool across = orientation() == Qt::Horizontal;
    const int handleLength = across ? handle.width() : handle.height();
    const int length = (across ? groove.width() : groove.height()) - handleLength;
    return {static_cast<double>(across ? groove.left() : groove.top()), static_cast<double>(std::max(length, 1)),
            static_cast<double>(handleLength), option.upsideDown};
}

double SliderWidget::GetDragPosition(const Drag& drag, double pixel) const {
    const double distance = GetTrack().GetDistance(pixel - drag.anchorPixel);
    return drag.anchorPosition + distance * (drag.fine ? kFineDrag : 1.0);
}

// Mouse

void SliderWidget::Grab(const Drag& drag) {
    mDrag = drag;
    // Moves without a button are what tells that its release went to somebody else.
    setMouseTracking(true);
    update();
}

void SliderWidget::LetGo() {
    mDrag.reset();
    mHeldKeys.clear();
    setMouseTracking(false);
    update();
}

void SliderWidget::mousePressEvent(QMouseEvent* event) {
    if (event->button() != Qt::LeftButton || mClient == nullptr) {
        event->ignore();
        return;
    }
    event->accept();
    const double pixel = Along(event->position());
    const bool onHandle = GetHandle().contains(event->position().toPoint());
    const double position = onHandle ? mClient->GetPosition() : GetTrack().GetPosition(pixel);
    const QPointer<SliderWidget> self(this);
    if (!FinishKeys()) return;
    Grab({position, pixel, pixel, IsFine(*event)});
    mClient->BeginGesture();
    if (!onHandle && self && mClient != nullptr && mDrag) mClient->MoveTo(position);
}

void SliderWidget::mouseMoveEvent(QMouseEvent* event) {
    event->accept();
    if (!mDrag || mClient == nullptr) return;
    const double pixel = Along(event->position());
    if ((event->buttons() & Qt::LeftButton) == 0) {
        Interrupt();
        return;
    }
    if (IsFine(*event) != mDrag->fine) {
        mDrag->anchorPosition = std::clamp(GetDragPosition(*mDrag, mDrag->lastPixel), 0.0, 1.0);
        mDrag->anchorPixel = mDrag->lastPixel;
        mDrag->fine = IsFine(*event);
    }
    if (pixel == mDrag->lastPixel) return;
    mDrag->lastPixel = pixel;
    mClient->MoveTo(GetDragPosition(*mDrag, pixel));
}

void SliderWidget::mouseReleaseEvent(QMouseEvent* event) {
    if (event->button() != Qt::LeftButton) {
        event->ignore();
        return;
    }
    event->accept();
    if (!mDrag || mClient == nullptr) return;
    LetGo();
    mClient->FinishGesture();
}

// Keys

// Along the slider the arrows move the handle the way that they point; across it, up and right are more.
std::optional<double> SliderWidget::GetStep(int key, bool fine) const {
    const bool turned = invertedAppearance();
    const double step = fine ? kFineStep : kStep;
    switch (key) {
        case Qt::Key_Right:
            return turned && orientation() == Qt::Horizontal ? -step : step;
        case Qt::Key_Left:
            return turned && orientation() == Qt::Horizontal ? step : -step;
        case Qt::Key_Up:
            return turned && orientation() == Qt::Vertical ? -step : step;
        case Qt::Key_Down:
            return turned && orientation() == Qt::Vertical ? step : -step;
        case Qt::Key_PageUp:
            return kPage;
        case Qt::Key_PageDown:
            return -kPage;
        case Qt::Key_Home:
            return -1.0;
        case Qt::Key_End:
            return 1.0;
        default:
            return std::nullopt;
    }
}

bool SliderWidget::UsesKey(const QKeyEvent& key) const {
    if (key.key() == Qt::Key_Escape) return IsHeld();
    return !IsShortcut(key) && GetStep(key.key(), false).has_value();
}

void SliderWidget::keyPressEvent(QKeyEvent* event) {
    event->setAccepted(UsesKey(*event) && mClient != nullptr);
    if (!event->isAccepted()) return;
    if (event->key() == Qt::Key_Escape) {
        LetGo();
        mClient->RevertGesture();
        return;
    }
    if (mDrag) return;
    const bool held = mHeldKeys.count(event->key()) != 0;
    // The key was pressed elsewhere, or its gesture has ended already.
    if (event->isAutoRepeat() && !held) return;
    const QPointer<SliderWidget> self(this);
    const double step = *GetStep(event->key(), IsFine(*event));
    const int key = event->key();
    const bool begins = mHeldKeys.empty();
    mHeldKeys.insert(key);
    if (begins) mClient->BeginGesture();
    if (self && mClient != nullptr && mHeldKeys.count(key) != 0) mClient->MoveBy(step);
}

void SliderWidget::keyReleaseEvent(QKeyEvent* event) {
    const bool held = mHeldKeys.count(event->key()) != 0;
    event->setAccepted(held);
    if (!held || event->isAutoRepeat()) return;
    mHeldKeys.erase(event->key());
    if (mHeldKeys.empty() && mClient != nullptr) mClient->FinishGesture();
}

bool SliderWidget::FinishKeys() {
    const QPointer<SliderWidget> self(this);
    if (mHeldKeys.empty()) return true;
    mHeldKeys.clear();
    mClient->FinishGesture();
    return self && mClient != nullptr && isEnabled();
}

// Wheel

void SliderWidget::wheelEvent(QWheelEvent* event) {
    event->setAccepted(hasFocus() && !IsShortcut(*event) && mClient != nullptr);
    if (!event->isAccepted() || IsHeld()) return;
    const QPoint angle = event->angleDelta();
    // Sideways the wheel counts the other way round: to the right is less.
    const int turned = (angle.y() != 0 ? angle.y() : -angle.x()) * (event->inverted() ? -1 : 1);
    if ((turned < 0) != (mWheelRest < 0)) mWheelRest = 0;
    mWheelRest += turned;
    const double step = (IsFine(*event) ? kFineStep : kStep) * (mWheelRest < 0 ? -1 : 1);
    const QPointer<SliderWidget> self(this);
    int notches = std::abs(mWheelRest / kWheelNotch);
    mWheelRest %= kWheelNotch;
    for (; notches > 0 && self && mClient != nullptr; --notches) mClient->StepBy(step);
}

// What ends a gesture besides the user

void SliderWidget::Interrupt() {
    if (!IsHeld()) return;
    LetGo();
    if (mClient != nullptr) mClient->InterruptGesture();
}

void SliderWidget::focusOutEvent(QFocusEvent* event) {
    mWheelRest = 0;
    QSlider::focusOutEvent(event);
    Interrupt();
}

void SliderWidget::hideEvent(QHideEvent* event) {
    QSlider::hideEvent(event);
    Interrupt();
}

void SliderWidget::changeEvent(QEvent* event) {
    QSlider::changeEvent(event);
    if (event->type() == QEvent::EnabledChange && !isEnabled()) Interrupt();
}

// Painting

// Styles show the focus to those who came by the Tab key. Here it also says whom the wheel moves.
void SliderWidget::initStyleOption(QStyleOptionSlider* option) const {
    QSlider::initStyleOption(option);
    UseSharedPalette(*option, *this);
    if (hasFocus()) option->state |= QStyle::State_KeyboardFocusChange;
}

void SliderWidget::paintEvent(QPaintEvent* event) {
    if (!mDrag) {
        QSlider::paintEvent(event);
        return;
    }
    // The base class paints the handle as held only for gestures of its own.
    QStylePainter painter(this);
    QStyleOptionSlider option;
    initStyleOption(&option);
    option.subControls = QStyle::SC_SliderGroove | QStyle::SC_SliderHandle;
    option.activeSubControls = QStyle::SC_SliderHandle;
    option.state |= QStyle::State_Sunken;
    painter.drawComplexControl(QStyle::CC_Slider, option);
}

}  // namespace zelui
