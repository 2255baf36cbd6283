#include "StaticTextPeer.h"

#include <QLabel>

#include "ControlText.h"
#include "PlainText.h"

namespace zelui {
namespace controls {

namespace {

// The frame's own left and right: a right-to-left language does not move what the program has placed.
Qt::Alignment ToQtAlignment(ControlAlignment alignment) {
    switch (alignment) {
        case kAlignCenter:
            return Qt::AlignHCenter | Qt::AlignVCenter;
        case kAlignRight:
            return Qt::AlignRight | Qt::AlignAbsolute | Qt::AlignVCenter;
        case kAlignLeft:
            break;
    }
    return Qt::AlignLeft | Qt::AlignAbsolute | Qt::AlignVCenter;
}

}  // namespace

StaticTextPeer::StaticTextPeer(UI_StaticText& text) : ControlPeer(text) {}

const UI_StaticText& StaticTextPeer::GetText() const { return static_cast<const UI_StaticText&>(GetNode()); }

QWidget* StaticTextPeer::MakeControl(QWidget& parent) {
    QLabel* const label = new QLabel(&parent);
    label->setTextFormat(Qt::PlainText);
    return label;
}

void StaticTextPeer::OnSync() {
    ControlPeer::OnSync();
    QLabel& label = static_cast<QLabel&>(*GetWidget());
    label.setAlignment(ToQtAlignment(GetText().GetAlignment()));
    const QString text = ToControlText(GetText().GetValue());
    label.setText(label.fontMetrics().elidedText(text, Qt::ElideRight, label.contentsRect().width()));
}

QString StaticTextPeer::GetOwnAccessibleName() const { return ToControlText(GetText().GetValue()); }

QString StaticTextPeer::GetOwnToolTip() const {
    const QString text = ToControlText(GetText().GetValue());
    return static_cast<const QLabel&>(*GetWidget()).text() == text ? QString() : ToToolTip(text);
}

}  // namespace controls
}  // namespace zelui
