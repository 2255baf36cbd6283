#pragma once

#include <QObject>
#include <zelui/UI_ControlView.h>

#include "NodePeer.h"

class QKeyEvent;

namespace zelui {
namespace controls {

/// What the Qt sides of all controls share: the font, the focus by click but not by Tab (which goes by the order of the
/// nodes), the keys that are not the host's shortcuts while the control has the focus, and the name that a text beside
/// the control gives it.
///
/// Whoever calls the host's code holds the control, and asks a QPointer of the peer whether it still exists.
class ControlPeer : public ui::UI_Node::Peer, protected QObject {
protected:
    explicit ControlPeer(UI_ControlView& control);
    ~ControlPeer() override;

    UI_ControlView& GetControl() const;

    /// Makes the widget, with nothing of the control in it yet.
    virtual QWidget* MakeControl(QWidget& parent) = 0;
    /// Overrides call it first.
    void OnSync() override;
    QString GetOwnAccessibleName() const override;

    /// Whether the control does something with the key.
    virtual bool UsesKey(const QKeyEvent& key) const;
    /// An event of the widget, before the widget gets it; true uses it up.
    virtual bool OnEvent(QEvent& event);

    /// Whether the key is one of the person's alone: with Control, Alt or Meta it is a shortcut.
    static bool IsPlain(const QKeyEvent& key);
    /// Whether the key is Return, or Enter of the number pad.
    static bool IsReturn(const QKeyEvent& key);

private:
    QWidget* MakeWidget(QWidget& parent) final;
    bool eventFilter(QObject* watched, QEvent* event) override;
};

/// Brings the controls up to date that are known to screen readers by this text: those between it and the next one
/// among its siblings.
void RenameControlsAfter(const ui::UI_Node& text);

}  // namespace controls
}  // namespace zelui
