#include "Vst2Editor.h"

#include <algorithm>
#include <cstring>
#include <utility>

#include "EditorSizeRequests.h"
#include "EditorSupport.h"
#include "PluginCall.h"
#include "Vst2AudioFilter.h"
#include "Vst2Keys.h"

namespace zelaudiofilterhost {

namespace {

using zelcore::geom::Point;
using zelcore::geom::Rect;

Rect BoundEditorRect(const vst2::EditorRect& given) {
    Rect rect;
    rect.left = given.left;
    rect.top = given.top;
    rect.width = std::clamp(given.right - given.left, 0, EditorSizeRequests::kMaxExtent);
    rect.height = std::clamp(given.bottom - given.top, 0, EditorSizeRequests::kMaxExtent);
    return rect.IsEmpty() ? Rect{rect.left, rect.top, 0, 0} : rect;
}

}  // namespace

Vst2Editor::Vst2Editor(Vst2AudioFilter& filter)
    : mFilter(&filter), mState(kClosed), mIsAttached(false), mIsIdling(false), mIsTelling(false) {}

Vst2Editor::~Vst2Editor() {
    // First: whoever asks for an editor while this one closes must not get one that is half gone.
    mFilter->ForgetEditor();
    Close();
}

Rect Vst2Editor::GetViewRect() {
    const boost::intrusive_ptr<Vst2Editor> alive(this);
    if (mState == kClosed) {
        ForgetSize();
    } else if (IsShown()) {
        UpdateSize();
    }
    return ToDisplayUnits(mWanted);
}

bool Vst2Editor::OpenView(HWND parent) {
    if (parent == nullptr) return false;
    const boost::intrusive_ptr<Vst2Editor> alive(this);
    Close();
    // In the middle of a call of the effect's, as the state then says, there is no way to begin anew.
    if (mState != kClosed) return false;
    mState = kOpening;
    ForgetSize();
    mToldSize = GetWantedSize();
    const bool isOpened = OpenEffect(parent);
    // The effect may have run the event loop, and somebody may have closed this meanwhile.
    if (!isOpened || mState != kOpening) {
        Detach();
        return false;
    }
    mState = kOpen;
    AnnounceSize();
    return true;
}

void Vst2Editor::CloseView() {
    const boost::intrusive_ptr<Vst2Editor> alive(this);
    Close();
}

void Vst2Editor::Idle() {
    if (mState != kOpen || mIsIdling) return;
    const boost::intrusive_ptr<Vst2Editor> alive(this);
    mFilter->GetSizeRequests().Rearm();
    {
        // An effect that shows a dialog of its own lets the host's timers come in the middle of its turn.
        const Marker marker(mIsIdling);
        CallPluginQuietly([this] { Dispatch(vst2::kEditorIdle); });
    }
    if (mState != kOpen) return;
    UpdateSize();
    AnnounceSize();
}

bool Vst2Editor::DispatchKeyboardFocus(bool) { return mState == kOpen; }

bool Vst2Editor::DispatchCurrentFocus() { return mState == kOpen; }

void Vst2Editor::SetContentScale(float scale) {
    if (!IsContentScale(scale) || scale == GetContentScale()) return;
    const boost::intrusive_ptr<Vst2Editor> alive(this);
    AudioFilterEditor::SetContentScale(scale);
    if (mState == kOpen) AnnounceSize();
}

bool Vst2Editor::DoKey(int osCode, int modifiers, unsigned short character, bool down) {
    if (mState != kOpen) return false;
    const boost::intrusive_ptr<Vst2Editor> alive(this);
    if (PassKey(osCode, modifiers, character, down)) return true;
    if (!down || !AdvancesFocus(osCode, modifiers)) return false;
    GetAdvanceFocusSignal()(modifiers == 0);
    return true;
}

std::intptr_t Vst2Editor::Dispatch(vst2::EffectOperation operation, void* pointer) const {
    return mFilter->GetInstance().Dispatch(operation, 0, 0, pointer);
}

bool Vst2Editor::PassKey(int osCode, int modifiers, unsigned short character, bool down) const {
    const Vst2Key key = MakeVst2Key(osCode, modifiers, character);
    if (!key.IsKnown()) return false;
    std::intptr_t used = 0;
    CallPluginQuietly([&] {
        used = mFilter->GetInstance().Dispatch(down ? vst2::kEditorKeyDown : vst2::kEditorKeyUp, key.character,
                                               key.virtualKey, nullptr, static_cast<float>(key.modifiers));
    });
    // Some say no with -1.
    return used > 0;
}

bool Vst2Editor::OpenEffect(HWND parent) {
    if (mState != kOpening) return false;
    mFilter->GetSizeRequests().Begin([this] { TellSize(); });
    mIsAttached = true;
    std::intptr_t result = 0;
    bool hasThrown = true;
    CallPluginQuietly([&] {
        result = Dispatch(vst2::kEditorOpen, parent);
        hasThrown = false;
    });
    if (hasThrown || mState != kOpening) return false;
    // Some know their size only now.
    UpdateSize();
    return result != 0 || !mWanted.IsEmpty();
}

void Vst2Editor::Close() noexcept {
    if (mState == kOpening) mState = kAbandoned;
    if (mState == kOpen) Detach();
}

void Vst2Editor::Detach() noexcept {
    mState = kClosing;
    mFilter->GetSizeRequests().End();
    // After a failed opening too: it is not known how far the effect got.
    if (std::exchange(mIsAttached, false)) CallPluginQuietly([this] { Dispatch(vst2::kEditorClose); });
    mState = kClosed;
}

Rect Vst2Editor::AskRect() const {
    Rect rect;
    CallPluginQuietly([&] {
        const vst2::EditorRect* given = nullptr;
        Dispatch(vst2::kEditorGetRect, &given);
        if (given == nullptr) return;
        // In one go, and wherever it lies: the effect may change it at any time.
        vst2::EditorRect copy;
        std::memcpy(&copy, given, sizeof(copy));
        rect = BoundEditorRect(copy);
    });
    return rect;
}

Point Vst2Editor::GetWantedSize() const {
    const Rect units = ToDisplayUnits(mWanted);
    return {units.width, units.height};
}

void Vst2Editor::ForgetSize() { mWanted = mAnswered = AskRect(); }

void Vst2Editor::UpdateSize() {
    const Rect answer = AskRect();
    const bool isNews = !(answer == mAnswered);
    mAnswered = answer;
    if (isNews) mWanted = answer;
    // Whatever answer goes with a request, it is the request that the effect has drawn for.
    if (const auto requested = mFilter->GetSizeRequests().Take()) {
        mWanted.width = requested->x;
        mWanted.height = requested->y;
    }
}

void Vst2Editor::AnnounceSize() {
    if (!(GetWantedSize() == mToldSize)) mFilter->GetSizeRequests().Announce();
}

void Vst2Editor::TellSize() {
    if (mState != kOpen || mIsTelling) return;
    const boost::intrusive_ptr<Vst2Editor> alive(this);
    UpdateSize();
    if (GetWantedSize() == mToldSize) return;
    mToldSize = GetWantedSize();
    const Marker marker(mIsTelling);
    GetContentSizeChangedSignal()();
}

}  // namespace zelaudiofilterhost
