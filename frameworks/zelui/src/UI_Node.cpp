#include <zelui/UI_Node.h>

#include <algorithm>
#include <cmath>
#include <map>

#include <zelcore/MainLoop.h>
#include <zelui/UI_Container.h>

#include "CallOut.h"
#include "NodeHost.h"
#include "NodePeer.h"
#include "PixelEdge.h"

namespace zelui {
namespace ui {

namespace {

using zelcore::geom::Rect;
using zelcore::geom::RectF;
using zelcore::threads::MainLoop;

// What Qt can place and a float can tell apart.
constexpr float kLargestCoordinate = 16000000.0f;

bool IsUsable(const RectF& rect) {
    const auto usable = [](float number) { return std::isfinite(number) && std::fabs(number) <= kLargestCoordinate; };
    return usable(rect.left) && usable(rect.top) && usable(rect.width) && usable(rect.height);
}

/// Holds a node for the time of a call that may let go of it. One that nobody holds yet is still being made, and the
/// first reference would be its last.
boost::intrusive_ptr<UI_Node> Hold(UI_Node& node) {
    return node.GetRefCount() > 0 ? boost::intrusive_ptr<UI_Node>(&node) : boost::intrusive_ptr<UI_Node>();
}

}  // namespace

/// What few nodes have.
struct UI_Node::Extras {
    struct Timer {
        MainLoop* loop;
        MainLoop::Id timer;
        // Held by the function that the loop has: the loop may go first, and with it the timer.
        std::weak_ptr<const bool> inLoop;

        void Stop() const {
            if (!inLoop.expired()) loop->StopTimer(timer);
        }
    };

    zelcore::utf8string id;
    zelcore::ustring accessibleName;
    zelcore::ustring toolTip;
    std::map<long, Timer> timers;
};

UI_Node::UI_Node() = default;

UI_Node::~UI_Node() {
    if (!mExtras) return;
    for (const auto& [id, timer] : mExtras->timers) timer.Stop();
}

UI_Node::Extras& UI_Node::GetExtras() {
    if (!mExtras) mExtras = std::make_unique<Extras>();
    return *mExtras;
}

bool UI_Node::UI_IsInWindow() const { return mHost != nullptr; }

UI_Container* UI_Node::UI_AsContainer() { return nullptr; }

void UI_Node::UI_SetID(const zelcore::utf8string& id) {
    GetExtras().id = id;
    UI_SyncPeer();
}

zelcore::utf8string UI_Node::UI_GetID() const { return mExtras ? mExtras->id : zelcore::utf8string(); }

void UI_Node::UI_SetAccessibleName(const zelcore::ustring& name) {
    GetExtras().accessibleName = name;
    UI_SyncPeer();
}

zelcore::ustring UI_Node::UI_GetAccessibleName() const {
    return mExtras ? mExtras->accessibleName : zelcore::ustring();
}

void UI_Node::UI_SetToolTip(const zelcore::ustring& text) {
    GetExtras().toolTip = text;
    UI_SyncPeer();
}

zelcore::ustring UI_Node::UI_GetToolTip() const { return mExtras ? mExtras->toolTip : zelcore::ustring(); }

// Frame

// No node lays out its children later than at once yet, so that there is nothing to be done first.
RectF UI_Node::UI_GetLocalRectF(bool) const { return mFrame; }

Rect UI_Node::UI_GetLocalRect(bool applyLayout) const {
    const RectF frame = UI_GetLocalRectF(applyLayout);
    const long left = ToPixelEdge(frame.left);
    const long top = ToPixelEdge(frame.top);
    return {left, top, ToPixelEdge(frame.Right()) - left, ToPixelEdge(frame.Bottom()) - top};
}

void UI_Node::UI_SetLocalRectF(const RectF& frame) {
    if (!IsUsable(frame)) return;
    mFrameWasSet = true;
    ApplyFrame({frame.left, frame.top, std::max(frame.width, 0.0f), std::max(frame.height, 0.0f)});
}

void UI_Node::UI_SetLocalRect(const Rect& frame) {
    UI_SetLocalRectF({static_cast<float>(frame.left), static_cast<float>(frame.top), static_cast<float>(frame.width),
                      static_cast<float>(frame.height)});
}

void UI_Node::ApplyFrame(const RectF& frame) {
    if (frame == mFrame) return;
    const boost::intrusive_ptr<UI_Node> self = Hold(*this);
    const bool resized = frame.width != mFrame.width || frame.height != mFrame.height;
    mFrame = frame;
    UI_SyncPeer();
    if (mHost != nullptr) mHost->OnFrameChanged(*this);
    if (resized) ForEachChild([](UI_Node& child) { child.FollowParent(); });
    // Whoever is told may set another frame, and has then been told of that one; nobody gets an old one after it.
    if (resized && frame.width == mFrame.width && frame.height == mFrame.height) UI_SizeChanged(mFrame);
    if (frame == mFrame) UI_NodeChanged(kNodeFrameChanged);
}

void UI_Node::FollowParent() {
    if (mFrameWasSet || mParent == nullptr || !UI_FillsParent()) return;
    const RectF frame = mParent->mFrame;
    ApplyFrame({0.0f, 0.0f, frame.width, frame.height});
}

bool UI_Node::UI_FillsParent() const { return false; }

// Shown, enabled

void UI_Node::UI_Show(bool show) {
    if (show == mShown) return;
    const boost::intrusive_ptr<UI_Node> self = Hold(*this);
    mShown = show;
    if (!show) PassFocusOn();
    UI_SyncPeer();
    if (mHost != nullptr) mHost->ScheduleUpdate();
    UI_NodeChanged(kNodeShownChanged);
}

void UI_Node::UI_SetDisabled(bool disabled) {
    if (disabled == mDisabled) return;
    const boost::intrusive_ptr<UI_Node> self = Hold(*this);
    mDisabled = disabled;
    if (disabled) PassFocusOn();
    UI_SyncPeer();
    TellStateChanged();
}

bool UI_Node::UI_IsDisabled() const {
    const UI_Node* node = this;
    while (node != nullptr && !node->mDisabled) node = node->mParent;
    return node != nullptr;
}

void UI_Node::TellStateChanged() {
    const bool disabled = UI_IsDisabled();
    if (disabled == mToldDisabled) return;
    const boost::intrusive_ptr<UI_Node> self = Hold(*this);
    mToldDisabled = disabled;
    UI_DisabledStateChanged();
    if (disabled == mToldDisabled) UI_NodeChanged(kNodeStateChanged);
    ForEachChild([](UI_Node& child) { child.TellStateChanged(); });
}

bool UI_Node::IsReachable() const {
    const UI_Node* node = this;
    while (node != nullptr && node->mShown && !node->mDisabled) node = node->mParent;
    return node == nullptr && mHost != nullptr;
}

void UI_Node::UI_NodeChanged(int) {}

void UI_Node::UI_SizeChanged(const RectF&) {}

void UI_Node::UI_DisabledStateChanged() {}

// Painting

void UI_Node::UI_Invalidate(const RectF* rect, std::uint32_t) {
    if (mHost != nullptr) mHost->Invalidate(*this, rect);
}

void UI_Node::UI_UpdateNow(std::uint32_t flags) {
    if (mHost != nullptr) mHost->PaintNow(*this, flags != 0);
}

const drawbot::SupplierInterface* UI_Node::UI_GetDrawSupplier() const {
    return mHost != nullptr ? drawbot::SupplierInterface::GetDefault() : nullptr;
}

float UI_Node::UI_GetPixelScale() const { return mHost != nullptr ? mHost->GetPixelScale() : 1.0f; }

void UI_Node::UI_Draw(drawbot::Drawbot&) {}

// Keyboard

bool UI_Node::UI_HasKeyboardFocus(bool orDescendant) const {
    const UI_Node* node = UI_GetKeyboardFocusLeafNode();
    while (orDescendant && node != nullptr && node != this) node = node->mParent;
    return node == this;
}

UI_Node* UI_Node::UI_GetKeyboardFocusLeafNode() const { return mHost != nullptr ? mHost->GetFocusNode() : nullptr; }

bool UI_Node::UI_WantsKeyboardFocus() const { return false; }

bool UI_Node::UI_WantsKeyboardFocusFromAdvance() const { return UI_WantsKeyboardFocus(); }

bool UI_Node::UI_GainKeyboardFocus(FocusChangeReason reason) {
    if (!IsReachable()) return false;
    const boost::intrusive_ptr<UI_Node> self = Hold(*this);
    if (UI_WantsKeyboardFocus()) return mHost->GiveFocus(*this, reason);
    UI_Container* const container = UI_AsContainer();
    for (std::size_t i = 0; container != nullptr && i < container->ChildCount(); ++i) {
        if (container->ChildAt(i)->UI_GainKeyboardFocus(reason)) return true;
    }
    return false;
}

bool UI_Node::UI_DoKeyboardEvent(const KeyboardEvent&) { return false; }

void UI_Node::PassFocusOn() {
    if (UI_HasKeyboardFocus(true)) mHost->PassFocusOn(*this);
}

// Timers

void UI_Node::UI_InstallTimer(float period, long id) {
    MainLoop* const loop = MainLoop::GetInstalled();
    if (loop == nullptr || std::isnan(period)) return;
    UI_RemoveTimer(id, false);
    const double milliseconds = std::clamp(static_cast<double>(period) * 1000.0, 1.0, 1e9);
    const std::shared_ptr<const bool> inLoop = std::make_shared<const bool>(true);
    const MainLoop::Id timer =
        loop->StartTimer(static_cast<int>(std::lround(milliseconds)), [this, id, inLoop] { OnTimer(id); });
    GetExtras().timers[id] = {loop, timer, inLoop};
}

void UI_Node::UI_RemoveTimer(long id, bool andOfChildren) {
    if (mExtras) {
        const auto found = mExtras->timers.find(id);
        if (found != mExtras->timers.end()) {
            found->second.Stop();
            mExtras->timers.erase(found);
        }
    }
    if (andOfChildren) ForEachChild([id](UI_Node& child) { child.UI_RemoveTimer(id, true); });
}

void UI_Node::OnTimer(long id) {
    const boost::intrusive_ptr<UI_Node> self = Hold(*this);
    const MainLoop::Id timer = mExtras->timers.at(id).timer;
    bool goesOn = true;
    CallOut("A view's timer", [&] { goesOn = UI_DoTimerNotify(id); });
    const auto found = mExtras->timers.find(id);
    // It may have been removed meanwhile, and installed anew.
    if (!goesOn && found != mExtras->timers.end() && found->second.timer == timer) UI_RemoveTimer(id, false);
}

bool UI_Node::UI_DoTimerNotify(long) { return true; }

// Tree

void UI_Node::ForEachChild(const std::function<void(UI_Node&)>& function) {
    UI_Container* const container = UI_AsContainer();
    if (container == nullptr) return;
    // What is called may change the children.
    const std::vector<boost::intrusive_ptr<UI_Node>> children = container->mChildren;
    for (const boost::intrusive_ptr<UI_Node>& child : children) {
        if (child->mParent == this) function(*child);
    }
}

void UI_Node::SetParent(UI_Node* parent) {
    const boost::intrusive_ptr<UI_Node> self = Hold(*this);
    mParent = parent;
    SetHost(parent != nullptr ? parent->mHost : nullptr);
    FollowParent();
    TellStateChanged();
}

void UI_Node::LeavePlace() {
    if (mParent != nullptr)
        mParent->UI_AsContainer()->ChildRemove(this);
    else if (mHost != nullptr)
        mHost->LetGoOfRoot();
}

void UI_Node::SetHost(NodeHost* host) {
    if (host == mHost) return;
    const boost::intrusive_ptr<UI_Node> self = Hold(*this);
    DropPeers();
    const std::function<void(UI_Node&)> take = [host, &take](UI_Node& node) {
        node.mHost = host;
        node.ForEachChild(take);
    };
    take(*this);
    if (host != nullptr) host->ScheduleUpdate();
    TellPlaceChanged();
}

void UI_Node::TellPlaceChanged() {
    if (mToldInWindow == UI_IsInWindow()) return;
    const boost::intrusive_ptr<UI_Node> self = Hold(*this);
    mToldInWindow = UI_IsInWindow();
    UI_NodeChanged(kNodePlaceChanged);
    ForEachChild([](UI_Node& child) { child.TellPlaceChanged(); });
}

void UI_Node::TellScaleChanged() {
    const boost::intrusive_ptr<UI_Node> self = Hold(*this);
    UI_NodeChanged(kNodeScaleChanged);
    ForEachChild([](UI_Node& child) { child.TellScaleChanged(); });
}

void UI_Node::TellWindowGoing() {
    for (boost::intrusive_ptr<UI_Node> node = Hold(*this); node; node = node->mParent)
        node->UI_NodeChanged(kNodeWindowGoing);
}

// Peers

std::unique_ptr<UI_Node::Peer> UI_Node::UI_MakePeer() { return nullptr; }

void UI_Node::UI_SyncPeer() {
    if (mPeer) mPeer->Sync();
}

void UI_Node::DropPeers() {
    ForEachChild([](UI_Node& child) { child.DropPeers(); });
    mPeer.reset();
}

}  // namespace ui
}  // namespace zelui
