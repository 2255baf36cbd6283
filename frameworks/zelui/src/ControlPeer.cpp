#include "ControlPeer.h"

#include <QKeyEvent>
#include <zelui/UI_Container.h>
#include <zelui/UI_StaticText.h>

#include "ControlText.h"

namespace zelui {
namespace controls {

namespace {

const ui::UI_Container* GetSiblings(const ui::UI_Node& node) {
    const ui::UI_Node* const parent = node.UI_GetParentNode();
    return parent != nullptr ? parent->UI_AsContainer() : nullptr;
}

std::size_t FindAmong(const ui::UI_Container& siblings, const ui::UI_Node& node) {
    std::size_t i = 0;
    while (i < siblings.ChildCount() && siblings.ChildAt(i).get() != &node) ++i;
    return i;
}

QString GetTextBefore(const ui::UI_Node& node) {
    const ui::UI_Container* const siblings = GetSiblings(node);
    if (siblings == nullptr) return QString();
    for (std::size_t i = FindAmong(*siblings, node); i-- > 0;) {
        const auto* const text = dynamic_cast<const UI_StaticText*>(siblings->ChildAt(i).get());
        if (text != nullptr && !text->GetValue().empty()) return ToControlText(text->GetValue());
    }
    return QString();
}

}  // namespace

ControlPeer::ControlPeer(UI_ControlView& control) : Peer(control) {}

ControlPeer::~ControlPeer() = default;

UI_ControlView& ControlPeer::GetControl() const { return static_cast<UI_ControlView&>(GetNode()); }

QWidget* ControlPeer::MakeWidget(QWidget& parent) {
    QWidget* const widget = MakeControl(parent);
    widget->setFont(GetControlFont());
    widget->installEventFilter(this);
    return widget;
}

void ControlPeer::OnSync() {
    const Qt::FocusPolicy policy = GetNode().UI_WantsKeyboardFocus() ? Qt::ClickFocus : Qt::NoFocus;
    if (GetWidget()->focusPolicy() != policy) GetWidget()->setFocusPolicy(policy);
}

QString ControlPeer::GetOwnAccessibleName() const { return GetTextBefore(GetNode()); }

bool ControlPeer::UsesKey(const QKeyEvent&) const { return false; }

bool ControlPeer::OnEvent(QEvent&) { return false; }

bool ControlPeer::IsPlain(const QKeyEvent& key) {
    return (key.modifiers() & (Qt::ControlModifier | Qt::AltModifier | Qt::MetaModifier)) == 0;
}

bool ControlPeer::IsReturn(const QKeyEvent& key) { return key.key() == Qt::Key_Return || key.key() == Qt::Key_Enter; }

bool ControlPeer::eventFilter(QObject* watched, QEvent* event) {
    if (watched != GetWidget()) return false;
    switch (event->type()) {
        case QEvent::FontChange:
        case QEvent::StyleChange:
            // What is elided depends on them.
            Sync();
            return false;
        case QEvent::ShortcutOverride:
            if (!UsesKey(static_cast<const QKeyEvent&>(*event))) break;
            event->accept();
            return true;
        default:
            break;
    }
    return OnEvent(*event);
}

void RenameControlsAfter(const ui::UI_Node& text) {
    const ui::UI_Container* const siblings = GetSiblings(text);
    if (siblings == nullptr) return;
    for (std::size_t i = FindAmong(*siblings, text) + 1; i < siblings->ChildCount(); ++i) {
        const boost::intrusive_ptr<ui::UI_Node> sibling = siblings->ChildAt(i);
        const auto* const next = dynamic_cast<const UI_StaticText*>(sibling.get());
        if (next != nullptr && !next->GetValue().empty()) return;
        if (sibling->UI_GetPeer() != nullptr) sibling->UI_GetPeer()->Sync();
    }
}

}  // namespace controls
}  // namespace zelui
