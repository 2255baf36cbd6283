#pragma once

#include <QPointer>
#include <QWidget>

#include <zelui/UI_Node.h>

namespace zelui {
namespace ui {

/// The Qt side of a node: its widget, which exists while the node is in view. It takes over what the node says and
/// tells the node what the user did; it keeps nothing of its own that would be lost with it.
///
/// A node's kind of peer derives from it, makes the widget and brings it up to date. What a handler of the widget calls
/// may let go of the node: whoever goes on afterwards holds the node meanwhile, and asks IsAlive before it touches the
/// peer again.
class UI_Node::Peer {
public:
    /// kBorrowed: the widget is part of another one's, which places it, shows it and takes it away.
    enum Ownership { kOwned, kBorrowed };
    explicit Peer(UI_Node& node, Ownership ownership = kOwned);
    /// The widget goes when the event loop is reached again: it may be the one whose event is being handled.
    virtual ~Peer();
    Peer(const Peer&) = delete;
    Peer& operator=(const Peer&) = delete;

    /// Makes the widget in `parent`, up to date and shown as the node is, below the sibling `above` (may be null).
    void Realize(QWidget& parent, QWidget* above);
    /// The widget; null before Realize and when Qt has deleted it with its parent.
    QWidget* GetWidget() const { return mWidget; }
    UI_Node& GetNode() const { return mNode; }

    /// The place of the node's widget in that of its parent: neighbours share an edge, and it falls on the same pixel
    /// for both. A root fills its surface from the left top corner, wherever its frame begins.
    static QRect GetPixelFrame(const UI_Node& node);
    /// Where the widget's left top corner lies in the coordinates that the node draws in.
    static QPointF GetDrawOrigin(const UI_Node& node);

    /// Brings the widget up to date with the node: frame, shown, enabled, names, and by OnSync what the node's kind has
    /// besides. Harmless before Realize.
    void Sync();
    /// Whether the widget may go for being out of view: not while it, or something in it, has the focus or is held by
    /// the mouse, nor when it would lose what is in it.
    virtual bool CanBeReleased() const;
    /// The peer whose widget this is; null when it is none.
    static Peer* Of(const QWidget* widget);
    /// The same for the nearest of the widget and those round it.
    static Peer* Around(const QWidget* widget);

protected:
    virtual QWidget* MakeWidget(QWidget& parent) = 0;
    /// Called by Sync with the widget there.
    virtual void OnSync() {}
    /// What screen readers call the node when it has no name set; empty leaves it to the widget.
    virtual QString GetOwnAccessibleName() const { return QString(); }
    /// The tool tip, ready for Qt, when the node has none set. Asked for after OnSync.
    virtual QString GetOwnToolTip() const { return QString(); }

private:
    void SyncNames();

    UI_Node& mNode;
    const Ownership mOwnership;
    const QWidget* mKey = nullptr;
    QPointer<QWidget> mWidget;
};

}  // namespace ui
}  // namespace zelui
