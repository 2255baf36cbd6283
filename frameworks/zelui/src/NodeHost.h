#pragma once

#include <boost/intrusive_ptr.hpp>
#include <QObject>
#include <QPointer>
#include <QRectF>
#include <QScreen>
#include <QWidget>
#include <vector>
#include <zelui/UI_Node.h>

namespace zelui {

/// Shows a node tree in a widget, the surface: makes the widgets of the nodes that are in view, lets go of those that
/// are far out of it, and moves the keyboard focus from node to node. Nodes tell it what changed. Main thread.
class NodeHost final : private QObject {
public:
    typedef boost::intrusive_ptr<ui::UI_Node> NodePtr;

    /// The surface outlives the host.
    explicit NodeHost(QWidget& surface);
    ~NodeHost() override;

    /// Shows `root`, which must have no parent and leaves the host that it is in. Called once. Throws
    /// std::invalid_argument. The surface has the root's size from now on.
    void TakeRoot(const NodePtr& root);
    /// The root goes somewhere else; nothing is shown any more.
    void LetGoOfRoot();

    /// The host of a node that is in a window; null for others.
    static NodeHost* Of(const ui::UI_Node& node);

    /// Null when it has gone somewhere else.
    const NodePtr& GetRoot() const { return mRoot; }
    QSize GetSize() const;
    float GetPixelScale() const;

    /// Makes and lets go of widgets according to what is in view now.
    void Update();
    /// The same, soon.
    void ScheduleUpdate();
    void OnFrameChanged(const ui::UI_Node& node);
    /// The surface or something round it has moved, was resized, shown or hidden, or has got another parent.
    void OnSurfaceChanged();
    /// The surface's screen, or the scale of it, may be another one.
    void OnScreenChanged();

    /// The platform window of a node, or one inside it, is about to go.
    static void TellWindowGoing(ui::UI_Node& node);

    /// Makes the widget of a node although it may be out of view, and returns it; null for a node that has none.
    QWidget* RealizeNow(ui::UI_Node& node);
    void Invalidate(const ui::UI_Node& node, const zelcore::geom::RectF* rect);
    void PaintNow(const ui::UI_Node& node, bool updateFirst);

    /// The node that has the focus in the surface's window; null when none of this tree has.
    ui::UI_Node* GetFocusNode() const;
    bool GiveFocus(ui::UI_Node& node, ui::FocusChangeReason reason);
    /// Moves the focus to the stop after that of now, or before it, and beyond the last one out of the tree.
    bool AdvanceFocus(bool forward);
    /// Gives the focus to the first stop of the tree, or to the last one.
    bool EnterFocus(bool forward, ui::FocusChangeReason reason);
    /// Gives the focus to the host's next widget behind the tree, or to the one before it.
    bool LeaveFocus(bool forward);
    /// `node`, which has the focus or holds the one that has, can keep it no longer.
    void PassFocusOn(const ui::UI_Node& node);

private:
    struct View;

    bool eventFilter(QObject* watched, QEvent* event) override;
    bool event(QEvent* event) override;
    void WatchAncestors();
    QRect GetViewRect() const;
    void Walk(ui::UI_Node& node, const View& view, QWidget& parent, QWidget* above);
    void Create(ui::UI_Node& node, QWidget& parent, QWidget* above);
    static bool CanBeReleased(ui::UI_Node& node);
    bool GiveFocusToHost(bool forward);
    void WatchScreen();
    void CheckScale();
    void TellThemeChanged();

    QWidget& mSurface;
    NodePtr mRoot;
    const int mThemeObserver;
    std::vector<QPointer<QWidget>> mWatched;
    QPointer<QScreen> mScreen;  ///< whose changes are listened to
    float mToldScale;
    bool mUpdating = false;
    bool mUpdateScheduled = false;
    bool mLeavingFocus = false;
    bool mPassingFocus = false;
};

}  // namespace zelui
