#pragma once

#include <utility>

#include <zelui/UI_InteractiveControlView.h>

namespace zelui {
namespace controls {

enum SliderDirection { kSliderHorizontal = 0, kSliderVertical = 1 };

/// What all sliders over values of type T are. A value that is no number is ignored.
template <typename T>
class UI_SliderT : public UI_InteractiveControlView {
public:
    /// The lowest value and the highest.
    typedef std::pair<T, T> Range;

    /// The values at the slider's two ends, the lower one first; the value is moved into it. From 0 to 1 at first. Ends
    /// that are equal, the wrong way round or no numbers change nothing.
    void SetValueRange(const Range& range);
    /// What SetValueRange set.
    const Range& GetValueRange() const;
    /// The part of the range that the user can reach; all of it at first. Parts outside the range count for nothing.
    void SetExtent(const Range& extent);
    /// What SetExtent set.
    const Range& GetExtent() const;

    /// The value: exactly the one that was set, moved into the range, until the user moves the slider.
    T GetValue() const;
    /// Moves the slider; tells nobody.
    void SetValue(T value);

protected:
    /// `wantsKeyboardFocus` makes it a stop of the Tab key.
    explicit UI_SliderT(bool wantsKeyboardFocus);
    ~UI_SliderT() override;

    /// Takes a value of the user's, moved into range and extent. True when it is another one than before.
    bool TakeUserValue(T value);

private:
    Range mRange;
    Range mExtent;
    T mValue;
};

extern template class ZELUI_API UI_SliderT<double>;

/// A slider with a handle on a track.
///
/// By mouse: dragging the handle is a gesture; a click beside it takes it there and goes on as a drag; with Shift held
/// the drag is ten times as fine. By keyboard: the arrow keys move by a hundredth of the range, with Shift by a
/// thousandth, Page Up and Page Down by a tenth, Home and End to its ends; from the press to the release of a key, its
/// repetitions included, is one gesture. Escape during a gesture takes the value back (one change) and cancels it. The
/// wheel moves the slider only while it has the keyboard focus, each notch a gesture of its own, so that a list of
/// sliders can be scrolled. Losing the focus, being hidden, disabled or taken out of the window
/// ends a gesture; as that happens inside of other things, often while what the slider is part of is being destroyed,
/// it is told from the main loop, or when the next gesture begins, and not at all when nobody holds the slider any
/// more.
class ZELUI_API UI_Slider : public UI_SliderT<double> {
public:
    /// `reversed` has the lower end at the right, or at the top.
    UI_Slider(SliderDirection direction, bool reversed);

    /// Which way it lies.
    SliderDirection GetDirection() const { return mDirection; }
    /// Whether the lower end is at the right, or at the top.
    bool IsReversed() const { return mReversed; }

protected:
    ~UI_Slider() override;
    std::unique_ptr<Peer> UI_MakePeer() override;

private:
    class SliderPeer;

    const SliderDirection mDirection;
    const bool mReversed;
};

}  // namespace controls
}  // namespace zelui
