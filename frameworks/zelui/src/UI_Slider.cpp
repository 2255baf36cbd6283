#include <zelui/UI_Slider.h>

#include <algorithm>
#include <cmath>

#include "SliderPeer.h"

namespace zelui {
namespace controls {

namespace {

bool IsFiniteRange(double low, double high) { return std::isfinite(low) && std::isfinite(high) && low <= high; }

}  // namespace

template <typename T>
UI_SliderT<T>::UI_SliderT(bool wantsKeyboardFocus)
    : UI_InteractiveControlView(wantsKeyboardFocus), mRange(0, 1), mExtent(0, 1), mValue(0) {}

template <typename T>
UI_SliderT<T>::~UI_SliderT() = default;

template <typename T>
void UI_SliderT<T>::SetValueRange(const Range& range) {
    if (!IsFiniteRange(range.first, range.second) || range.first == range.second) return;
    // An extent that is all of the range stays that.
    if (mExtent == mRange) mExtent = range;
    mRange = range;
    mValue = std::clamp(mValue, mRange.first, mRange.second);
    UI_SyncPeer();
}

// Not inline, however small: on Windows what is inline in a template's class is not in the library.
template <typename T>
const typename UI_SliderT<T>::Range& UI_SliderT<T>::GetValueRange() const {
    return mRange;
}

template <typename T>
const typename UI_SliderT<T>::Range& UI_SliderT<T>::GetExtent() const {
    return mExtent;
}

template <typename T>
T UI_SliderT<T>::GetValue() const {
    return mValue;
}

template <typename T>
void UI_SliderT<T>::SetExtent(const Range& extent) {
    if (IsFiniteRange(extent.first, extent.second)) mExtent = extent;
}

template <typename T>
void UI_SliderT<T>::SetValue(T value) {
    if (std::isnan(value)) return;
    const T inRange = std::clamp(value, mRange.first, mRange.second);
    if (inRange == mValue) return;
    mValue = inRange;
    UI_SyncPeer();
}

template <typename T>
bool UI_SliderT<T>::TakeUserValue(T value) {
    const T low = std::max(mRange.first, mExtent.first);
    const T high = std::min(mRange.second, mExtent.second);
    if (std::isnan(value) || low > high) return false;
    const T reachable = std::clamp(value, low, high);
    if (reachable == mValue) return false;
    mValue = reachable;
    UI_SyncPeer();
    return true;
}

template class UI_SliderT<double>;

UI_Slider::UI_Slider(SliderDirection direction, bool reversed)
    : UI_SliderT<double>(true), mDirection(direction), mReversed(reversed) {}

UI_Slider::~UI_Slider() {
    if (Peer* const peer = UI_GetPeer()) static_cast<SliderPeer*>(peer)->Forget();
}

std::unique_ptr<ui::UI_Node::Peer> UI_Slider::UI_MakePeer() { return std::make_unique<SliderPeer>(*this); }

}  // namespace controls
}  // namespace zelui
