#pragma once

#include <cstdint>
#include <functional>
#include <memory>

#include <zelcore/Geometry.h>
#include <zelcore/ustring.h>

#include <zelui/KeyboardEvent.h>
#include <zelui/SupplierInterface.h>
#include <zelui/UI_NodeBase.h>

namespace zelui {

class NodeHost;

namespace ui {

class UI_Container;

/// Why a node is given the keyboard focus.
enum FocusChangeReason {
    kFocusByMouse = 0,    ///< it was clicked
    kFocusByAdvance = 1,  ///< Tab came to it
    kFocusByReverse = 2,  ///< Shift and Tab came to it
    kFocusByProgram = 3,  ///< the program decided so, for instance when a dialog opens
    kFocusByWindow = 4,   ///< its window became the active one
    kFocusLeftOver = 5    ///< the node that had the focus was hidden, disabled or removed, and somebody has to have it
};

/// What UI_NodeChanged is told.
enum NodeChange {
    kNodeFrameChanged = 0,  ///< its frame was set to another one
    kNodeShownChanged = 1,  ///< it was shown or hidden
    kNodeStateChanged = 2,  ///< it became disabled or enabled, by itself or with an ancestor
    kNodePlaceChanged = 3,  ///< it, or an ancestor, came into a window or left it
    kNodeScaleChanged = 4,  ///< UI_GetPixelScale answers something else: its window came to a screen with another
                            ///< scale, or the screen's scale changed. Not told when it comes into a window or leaves it
    kNodeWindowGoing = 5  ///< a platform window in it, of which somebody has the handle, is about to go while the node
                          ///< stays: the window round it is being closed, and has others when it is shown again
};

/// A part of what a window shows. The node is the truth: its frame, whether it is shown, disabled or has the focus are
/// the node's; what stands on the screen follows, and exists only while the node is in view. Nodes are cheap.
///
/// Coordinates: a node's frame is in display units in the coordinates of its parent, whose own top left corner is 0, 0
/// to its children. "Local" rectangles are frames: the one that UI_GetLocalRectF answers, the one that UI_SetLocalRectF
/// takes and the one that fills the node when it is drawn are the same. A node is hidden until it is shown.
///
/// Main thread only.
class ZELUI_API UI_Node : public UI_NodeBase {
public:
    /// The parent, or null. Not held: it lives as long as its container does.
    UI_Node* UI_GetParentNode() const { return mParent; }
    /// True while its tree stands in a window, seen or not.
    bool UI_IsInWindow() const;

    /// A name to find the node by, in tests and archives; also the name of its widget.
    void UI_SetID(const zelcore::utf8string& id);
    /// What UI_SetID set; empty by itself.
    zelcore::utf8string UI_GetID() const;

    /// The frame. `applyLayout` has layout that is still to be done for this node done first, where its containers lay
    /// out their children themselves; without it the answer is the frame as it was last set.
    zelcore::geom::RectF UI_GetLocalRectF(bool applyLayout = false) const;
    /// UI_GetLocalRectF, rounded to whole units.
    zelcore::geom::Rect UI_GetLocalRect(bool applyLayout = false) const;
    /// Sets the frame. A negative size counts as 0; numbers that are none, or beyond 16 million, change nothing.
    void UI_SetLocalRectF(const zelcore::geom::RectF& frame);
    /// UI_SetLocalRectF in whole units.
    void UI_SetLocalRect(const zelcore::geom::Rect& frame);

    /// Shows or hides the node and with it its children; they keep their own state.
    void UI_Show(bool show);
    /// The opposite of UI_Show.
    void UI_Hide() { UI_Show(false); }
    /// Whether the node itself is shown; whether that can be seen depends on its ancestors as well.
    bool UI_IsShown() const { return mShown; }

    /// A disabled node and its children take no input.
    void UI_SetDisabled(bool disabled);
    /// Whether the node or one of its ancestors is disabled.
    bool UI_IsDisabled() const;

    /// Has the node painted again, soon: `rect`, in the coordinates of its frame, or all of it. `flags` is 0.
    void UI_Invalidate(const zelcore::geom::RectF* rect = nullptr, std::uint32_t flags = 0);
    /// Has what was invalidated of the node painted now. `flags` says what else is brought up to date first; all bits
    /// set is everything.
    void UI_UpdateNow(std::uint32_t flags = 0xFFFFFFFF);

    /// Whether the node has the keyboard focus, or with `orDescendant` one of the nodes in it.
    bool UI_HasKeyboardFocus(bool orDescendant) const;
    /// The node that has the keyboard focus in this node's window; null when none has.
    UI_Node* UI_GetKeyboardFocusLeafNode() const;
    /// Whether the node itself takes the keyboard focus. False unless overridden.
    virtual bool UI_WantsKeyboardFocus() const;
    /// Whether the Tab key stops here. As UI_WantsKeyboardFocus unless overridden.
    virtual bool UI_WantsKeyboardFocusFromAdvance() const;
    /// Gives the focus to this node, or else to the first node in it that takes it; true when one did. A node that
    /// cannot be seen, is disabled or not in a window takes none.
    virtual bool UI_GainKeyboardFocus(FocusChangeReason reason);
    /// A key for the node that has the focus or for one inside it that did not want it. True: the key is used up.
    virtual bool UI_DoKeyboardEvent(const KeyboardEvent& event);

    /// Calls UI_DoTimerNotify every `period` seconds (at least a millisecond) with `id`, until the timer is removed or
    /// the node goes. The same id again starts anew. A period that is no number changes nothing; without a main loop
    /// there are no timers.
    void UI_InstallTimer(float period, long id);
    /// Removes the timer of that id; `andOfChildren` also theirs of the same id. Harmless when there is none.
    void UI_RemoveTimer(long id, bool andOfChildren);
    /// Returns whether the timer goes on. One that throws goes on: what failed once may work the next time.
    virtual bool UI_DoTimerNotify(long id);

    /// What the node is drawn with: that of the window that it is in; null when it is in none.
    virtual const drawbot::SupplierInterface* UI_GetDrawSupplier() const;
    /// How many pixels of the screen a display unit has where the node stands (1, 1.25, 2); 1 while it is in no window.
    float UI_GetPixelScale() const;
    /// Draws the node, in the coordinates of its frame, beneath its children, which are drawn after it. Draws nothing
    /// unless overridden.
    virtual void UI_Draw(drawbot::Drawbot& drawbot);

    /// For screen readers, where the node's own text does not say what it is.
    void UI_SetAccessibleName(const zelcore::ustring& name);
    /// What screen readers say of the node.
    zelcore::ustring UI_GetAccessibleName() const;
    /// Sets the text that is shown when the mouse rests over the node; empty for none.
    void UI_SetToolTip(const zelcore::ustring& text);
    /// What UI_SetToolTip set.
    zelcore::ustring UI_GetToolTip() const;

    /// The node as a container; null when it is none.
    virtual UI_Container* UI_AsContainer();
    /// The same for a node that is not to be changed.
    const UI_Container* UI_AsContainer() const { return const_cast<UI_Node*>(this)->UI_AsContainer(); }

    /// The Qt side of a node; defined and known only inside the toolkit.
    class Peer;
    /// What stands for the node on the screen; null while nothing does. For the toolkit.
    Peer* UI_GetPeer() const { return mPeer.get(); }

protected:
    UI_Node();
    ~UI_Node() override;

    /// Called after a change; NodeChange says which. Overrides call their base's first.
    virtual void UI_NodeChanged(int change);
    /// Called after the node's width or height changed, with the new frame. Overrides call their base's first.
    virtual void UI_SizeChanged(const zelcore::geom::RectF& frame);
    /// Called after the node became disabled or enabled, by itself or with an ancestor. Overrides call their base's.
    virtual void UI_DisabledStateChanged();

    /// Whether the node, as long as its frame has never been set, fills its parent and follows its size. False unless
    /// overridden.
    virtual bool UI_FillsParent() const;

    /// Makes the Qt side when the node comes into view. Null: the node has none, nor have its children.
    virtual std::unique_ptr<Peer> UI_MakePeer();
    /// Has the Qt side, if there is one, take over what the node says now. Every setter of a control ends with it.
    void UI_SyncPeer();

private:
    friend class UI_Container;
    friend class zelui::NodeHost;
    struct Extras;

    Extras& GetExtras();
    void ApplyFrame(const zelcore::geom::RectF& frame);
    void FollowParent();
    void ForEachChild(const std::function<void(UI_Node&)>& function);
    bool IsReachable() const;
    void SetParent(UI_Node* parent);
    void SetHost(NodeHost* host);
    void TellPlaceChanged();
    void TellStateChanged();
    void TellScaleChanged();
    void TellWindowGoing();
    void PassFocusOn();
    void LeavePlace();
    void DropPeers();
    void OnTimer(long id);

    UI_Node* mParent = nullptr;
    NodeHost* mHost = nullptr;
    std::unique_ptr<Peer> mPeer;
    std::unique_ptr<Extras> mExtras;
    zelcore::geom::RectF mFrame;
    bool mFrameWasSet = false;
    bool mShown = false;
    bool mDisabled = false;
    // What the node was told last, so that each change is told once, whatever is changed while others are being told.
    bool mToldDisabled = false;
    bool mToldInWindow = false;
};

}  // namespace ui
}  // namespace zelui
