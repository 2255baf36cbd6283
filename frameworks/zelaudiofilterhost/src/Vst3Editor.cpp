#include "Vst3Editor.h"

#include <algorithm>
#include <cstdint>
#include <utility>

#include <pluginterfaces/gui/iplugviewcontentscalesupport.h>

#include "EditorSupport.h"
#include "PluginCall.h"
#include "Vst3AudioFilter.h"
#include "Vst3Keys.h"
#include "Vst3View.h"

namespace zelaudiofilterhost {

namespace {

using Steinberg::IPlugView;
using Steinberg::IPlugViewContentScaleSupport;
using Steinberg::tresult;
using Steinberg::ViewRect;
using zelcore::geom::Point;
using zelcore::geom::Rect;

constexpr std::int64_t kMaxExtent = EditorSizeRequests::kMaxExtent;
/// Enough for a view that finds its way to a size; one that wants another size after that wants one without end.
constexpr int kMaxSizesInOneGo = 4;

Rect BoundViewRect(const ViewRect& given) {
    Rect rect;
    rect.left = given.left;
    rect.top = given.top;
    rect.width = static_cast<long>(std::clamp<std::int64_t>(std::int64_t(given.right) - given.left, 0, kMaxExtent));
    rect.height = static_cast<long>(std::clamp<std::int64_t>(std::int64_t(given.bottom) - given.top, 0, kMaxExtent));
    return rect.IsEmpty() ? Rect{rect.left, rect.top, 0, 0} : rect;
}

bool IsSameRect(const ViewRect& left, const ViewRect& right) {
    return left.left == right.left && left.top == right.top && left.right == right.right && left.bottom == right.bottom;
}

/// Whether it has an area, and none beyond measure.
bool IsSize(const ViewRect& rect) {
    const auto isExtent = [](std::int64_t extent) { return extent > 0 && extent <= kMaxExtent; };
    return isExtent(std::int64_t(rect.right) - rect.left) && isExtent(std::int64_t(rect.bottom) - rect.top);
}

/// Calls the view, which stays at least until it returns, and answers what it answered.
template <typename Function>
tresult Ask(const Vst3Ptr<IPlugView>& view, Function function) noexcept {
    tresult result = Steinberg::kResultFalse;
    CallPluginQuietly([&] {
        const auto held = Vst3Ptr<IPlugView>::Share(view.Get());
        if (held) result = function(*held.Get());
    });
    return result;
}

}  // namespace

Vst3Editor::Vst3Editor(Vst3AudioFilter& filter, Vst3Ptr<IPlugView> view) : mFilter(&filter), mView(std::move(view)) {}

Vst3Editor::~Vst3Editor() {
    // First: whoever asks for an editor while this one closes must not get one that is half gone.
    mFilter->ForgetEditor();
    Close();
}

Rect Vst3Editor::GetViewRect() {
    const boost::intrusive_ptr<Vst3Editor> alive(this);
    if (mState == kClosed) EnsureView();
    // Made in the middle of something else, the view may be open by now.
    if (mState == kClosed) {
        ForgetSize();
    } else if (IsShown()) {
        UpdateSize();
    }
    return ToDisplayUnits(mWanted);
}

bool Vst3Editor::OpenView(HWND parent) {
    if (parent == nullptr) return false;
    const boost::intrusive_ptr<Vst3Editor> alive(this);
    Close();
    // In the middle of a call of the plug-in's, as the state then says, there is no way to begin anew.
    if (mState != kClosed) return false;
    mState = kOpening;
    if (!EnsureView() || mState != kOpening) {
        mState = kClosed;
        return false;
    }
    BeginOpening();
    const bool isAttached = Attach(parent);
    if (!isAttached || mState != kOpening) {
        Detach();
        return false;
    }
    mState = kOpen;
    // Some know their size only now.
    UpdateSize();
    AnnounceSize();
    return true;
}

void Vst3Editor::CloseView() {
    const boost::intrusive_ptr<Vst3Editor> alive(this);
    Close();
}

void Vst3Editor::Idle() {
    if (mState != kOpen) return;
    const boost::intrusive_ptr<Vst3Editor> alive(this);
    mFrame->GetSizeRequests().Rearm();
    TakeSizeFromElsewhere();
    UpdateSize();
    AnnounceSize();
}

bool Vst3Editor::DispatchKeyboardFocus(bool) { return TakeFocus(); }

bool Vst3Editor::DispatchCurrentFocus() { return TakeFocus(); }

void Vst3Editor::SetContentScale(float scale) {
    if (!IsContentScale(scale) || scale == mScale) return;
    const boost::intrusive_ptr<Vst3Editor> alive(this);
    mScale = scale;
    AudioFilterEditor::SetContentScale(scale);
    if (mState == kClosed || IsShown()) ApplyScale();
    if (mState != kOpen) return;
    UpdateSize();
    AnnounceSize();
}

bool Vst3Editor::DoKey(int osCode, int modifiers, unsigned short character, bool down) {
    if (mState != kOpen) return false;
    const boost::intrusive_ptr<Vst3Editor> alive(this);
    if (PassKey(osCode, modifiers, character, down)) return true;
    if (!down || !AdvancesFocus(osCode, modifiers)) return false;
    if (std::exchange(mHasFocus, false)) Ask(mView, [](IPlugView& view) { return view.onFocus(false); });
    GetAdvanceFocusSignal()(modifiers == 0);
    return true;
}

bool Vst3Editor::Resize(const ViewRect& size) {
    if (!IsShown() || !IsSize(size)) return false;
    const boost::intrusive_ptr<Vst3Editor> alive(this);
    mAskedSize = size;
    // Asked for within the answer to another size: whoever gives that one goes on with this one.
    if (!mIsGivingSizes) GiveSizes();
    return true;
}

bool Vst3Editor::EnsureView() {
    if (mView) return true;
    Vst3Ptr<IPlugView> view = mFilter->MakeView();
    // The plug-in may have run the event loop, and somebody may have needed one there.
    if (mView) return true;
    mView = std::move(view);
    ApplyScale();
    return bool(mView);
}

void Vst3Editor::BeginOpening() {
    mFrame = Vst3Ptr<Vst3PlugFrame>::Adopt(new Vst3PlugFrame(*this));
    mFrame->GetSizeRequests().Begin([this] { TellSize(); });
    ForgetSize();
    mToldSize = GetWantedSize();
    Ask(mView, [this](IPlugView& view) { return view.setFrame(mFrame.Get()); });
    ApplyScale();
}

bool Vst3Editor::Attach(HWND parent) {
    if (mState != kOpening) return false;
    // As long as it has not said that it failed it may have got anywhere.
    mIsAttached = true;
    const bool isDone = Ask(mView, [&](IPlugView& view) {
                            const tresult result = view.attached(parent, GetVst3WindowType());
                            mIsAttached = result == Steinberg::kResultTrue;
                            return result;
                        }) == Steinberg::kResultTrue;
    return isDone;
}

void Vst3Editor::Close() noexcept {
    if (mState == kOpening) mState = kAbandoned;
    if (mState == kOpen) Detach();
}

void Vst3Editor::Detach() noexcept {
    mState = kClosing;
    mFrame->Leave();
    if (std::exchange(mHasFocus, false)) Ask(mView, [](IPlugView& view) { return view.onFocus(false); });
    if (std::exchange(mIsAttached, false)) Ask(mView, [](IPlugView& view) { return view.removed(); });
    Ask(mView, [](IPlugView& view) { return view.setFrame(nullptr); });
    // Before the view: handlers that nobody has unregistered are often a part of it.
    mFrame->StopRunLoop();
    mView.Reset();
    mFrame.Reset();
    mState = kClosed;
}

void Vst3Editor::ApplyScale() {
    if (mScale == 0.0f) return;
    Ask(mView, [this](IPlugView& view) {
        const auto support =
            Vst3Ptr<IPlugViewContentScaleSupport>::Query(&view, Steinberg::IPlugViewContentScaleSupport_iid);
        return support ? support->setContentScaleFactor(mScale) : Steinberg::kNoInterface;
    });
}

bool Vst3Editor::TakeFocus() {
    if (mState != kOpen) return false;
    const boost::intrusive_ptr<Vst3Editor> alive(this);
    mHasFocus = true;
    // Few answer anything: what matters is that the view is there to get the keys.
    Ask(mView, [](IPlugView& view) { return view.onFocus(true); });
    return mState == kOpen;
}

bool Vst3Editor::PassKey(int osCode, int modifiers, unsigned short character, bool down) const {
    const Vst3Key key = MakeVst3Key(osCode, modifiers, character);
    if (!key.IsKnown()) return false;
    return Ask(mView, [&](IPlugView& view) {
               return down ? view.onKeyDown(key.character, key.virtualKey, key.modifiers)
                           : view.onKeyUp(key.character, key.virtualKey, key.modifiers);
           }) == Steinberg::kResultTrue;
}

Rect Vst3Editor::AskRect() const {
    ViewRect rect;
    const tresult result = Ask(mView, [&rect](IPlugView& view) { return view.getSize(&rect); });
    return result == Steinberg::kResultTrue ? BoundViewRect(rect) : Rect();
}

Point Vst3Editor::GetWantedSize() const {
    const Rect units = ToDisplayUnits(mWanted);
    return {units.width, units.height};
}

void Vst3Editor::ForgetSize() { mWanted = mAnswered = AskRect(); }

void Vst3Editor::UpdateSize() {
    const Rect answer = AskRect();
    if (!(answer == mAnswered)) mWanted = answer;
    mAnswered = answer;
}

void Vst3Editor::GiveSizes() {
    const Marker marker(mIsGivingSizes);
    std::optional<ViewRect> given;
    for (int i = 0; i < kMaxSizesInOneGo && mAskedSize && IsShown(); ++i) {
        const ViewRect size = *std::exchange(mAskedSize, {});
        if (given && IsSameRect(size, *given)) break;
        given = size;
        mWanted = BoundViewRect(size);
        // A copy: it may write into it.
        ViewRect lent = size;
        Ask(mView, [&lent](IPlugView& view) { return view.onSize(&lent); });
    }
    mAskedSize.reset();
    if (!IsShown()) return;
    UpdateSize();
    AnnounceSize();
}

void Vst3Editor::TakeSizeFromElsewhere() {
    const std::optional<Point> size = mFrame->GetSizeRequests().Take();
    if (size) Resize(ViewRect(0, 0, static_cast<Steinberg::int32>(size->x), static_cast<Steinberg::int32>(size->y)));
}

void Vst3Editor::AnnounceSize() {
    if (mState == kOpen && !(GetWantedSize() == mToldSize)) mFrame->GetSizeRequests().Announce();
}

void Vst3Editor::TellSize() {
    if (mState != kOpen || mIsTelling) return;
    const boost::intrusive_ptr<Vst3Editor> alive(this);
    TakeSizeFromElsewhere();
    // The plug-in may have run the event loop, and somebody may have closed this meanwhile.
    if (mState != kOpen) return;
    UpdateSize();
    if (mState != kOpen || GetWantedSize() == mToldSize) return;
    mToldSize = GetWantedSize();
    const Marker marker(mIsTelling);
    GetContentSizeChangedSignal()();
}

}  // namespace zelaudiofilterhost
